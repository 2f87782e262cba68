#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "elements/tle_category.h"
#include "platform/settings_store.h"

namespace veloran {

/// A download address of the user's own; stands among the groups as one more.
struct UserTLESource {
    std::string id;    ///< a UUID in text
    std::string name;  ///< label chosen by the user
    std::string url;

    /// Made of the name: sources whose names differ only in blanks, "/" and "_" share it, and with
    /// it their cache.
    std::string categoryKey() const;
    TLECategory asCategory() const;

    bool operator==(const UserTLESource&) const = default;
};

/// The groups that sources stand for, in their order.
std::vector<TLECategory> asCategories(const std::vector<UserTLESource>& sources);

/// Hosts of the ready-made offers: configuration, not part of the offers themselves.
struct PresetHosts {
    std::string csn = "http://www.csntechnologies.net";
    std::string amsat = "https://www.amsat.org";
};
/// Each with a fresh identity.
std::vector<UserTLESource> presetSources(const PresetHosts& hosts = {});

/// The user's sources in the settings store.
class UserTLESourceStore {
  public:
    explicit UserTLESourceStore(SettingsStore& settings) : settings_(settings) {}

    std::vector<UserTLESource> load() const;  ///< empty if any entry does not decode
    /// Leaves the stored list as it was when a text is no UTF-8.
    void save(const std::vector<UserTLESource>& sources);
    /// False, and nothing stored, if the address is there already.
    bool add(const UserTLESource& source);
    void remove(std::string_view id);
    std::optional<UserTLESource> findByCategoryKey(std::string_view key) const;

  private:
    SettingsStore& settings_;
};

}  // namespace veloran
