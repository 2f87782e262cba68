#include "elements/user_tle_source.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <utility>

#include "base/json.h"
#include "base/text.h"
#include "base/unique_id.h"

namespace veloran {

namespace {

namespace json = boost::json;

constexpr const char* kKey = "userTLESources";

std::optional<std::string> textMember(const json::object& object, std::string_view key) {
    const auto* value = object.if_contains(key);
    if (!value || !value->is_string()) return std::nullopt;
    return std::string(value->get_string());
}

/// "8-4-4-4-12" hexadecimal digits, capitals or not.
bool isUuid(std::string_view text) {
    constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
    return std::equal(text.begin(), text.end(), kForm.begin(), kForm.end(),
                      [&](char c, char expected) {
                          return expected == '-' ? c == '-' : kDigits.find(c) != kDigits.npos;
                      });
}

std::optional<UserTLESource> decodeSource(const json::value& value) {
    if (!value.is_object()) return std::nullopt;
    const auto& object = value.get_object();
    auto id = textMember(object, "id");
    auto name = textMember(object, "name");
    auto url = textMember(object, "url");
    if (!id || !isUuid(*id) || !name || !url) return std::nullopt;
    return UserTLESource{std::move(*id), std::move(*name), std::move(*url)};
}

}  // namespace

std::string UserTLESource::categoryKey() const {
    return "user:" + replacedAll(replacedAll(name, ' ', '_'), '/', '_');
}

TLECategory UserTLESource::asCategory() const {
    return {categoryKey(), url, name, "Custom URLs", true};
}

std::vector<TLECategory> asCategories(const std::vector<UserTLESource>& sources) {
    std::vector<TLECategory> groups;
    for (const auto& source : sources) groups.push_back(source.asCategory());
    return groups;
}

std::vector<UserTLESource> presetSources(const PresetHosts& hosts) {
    return {{UniqueId::make().text(), "CSN Technologies", hosts.csn + "/SAT/csnbare.txt"},
            {UniqueId::make().text(), "AMSAT NASA.all", hosts.amsat + "/tle/current/nasa.all"}};
}

std::vector<UserTLESource> UserTLESourceStore::load() const {
    const auto stored = settings_.text(kKey);
    const auto value = stored ? parseJson(*stored) : std::nullopt;
    if (!value || !value->is_array()) return {};
    std::vector<UserTLESource> sources;
    for (const auto& element : value->get_array()) {
        auto source = decodeSource(element);
        if (!source) return {};
        sources.push_back(std::move(*source));
    }
    return sources;
}

void UserTLESourceStore::save(const std::vector<UserTLESource>& sources) {
    json::array list;
    for (const auto& source : sources) {
        list.push_back({{"id", source.id}, {"name", source.name}, {"url", source.url}});
    }
    std::string text = json::serialize(list);
    if (isValidUtf8(text)) settings_.set(kKey, std::move(text));
}

bool UserTLESourceStore::add(const UserTLESource& source) {
    auto sources = load();
    const bool known = std::any_of(sources.begin(), sources.end(), [&source](const auto& stored) {
        return stored.url == source.url;
    });
    if (known) return false;
    sources.push_back(source);
    save(sources);
    return true;
}

void UserTLESourceStore::remove(std::string_view id) {
    auto sources = load();
    std::erase_if(sources, [id](const auto& source) { return source.id == id; });
    save(sources);
}

std::optional<UserTLESource> UserTLESourceStore::findByCategoryKey(std::string_view key) const {
    for (auto& source : load()) {
        if (source.categoryKey() == key) return std::move(source);
    }
    return std::nullopt;
}

}  // namespace veloran
