#pragma once

#include <set>
#include <string>
#include <vector>

#include "elements/tle_category.h"
#include "ui/settings/form_section.h"

namespace veloran {

class CustomSources;
class Disclosure;
class ValueLabel;

/// "TLE Sources": the groups of the element service, the user's own, and the age of them all.
class SourcesSection : public FormSection {
    Q_OBJECT
  public:
    explicit SourcesSection(std::shared_ptr<AppState> state);
    void refresh() override;

  private:
    struct Group {
        std::string key;
        SwitchRow* row;
    };
    struct GroupSection {
        Disclosure* disclosure;
        std::vector<Group> groups;
    };

    void addGroups(const QString& section, const std::vector<TLECategory>& categories);
    SwitchRow* makeGroup(const TLECategory& category);
    void addCustomSources();
    void addAge();
    void showSubscriptions();
    void showDownloads();
    void showCustomCount();

    std::vector<GroupSection> sections_;
    CustomSources* custom_ = nullptr;
    Disclosure* customDisclosure_ = nullptr;
    ValueLabel* age_ = nullptr;
    std::set<std::string> shown_;
    Downloads shownDownloads_;
    Instant shownAt_;
};

}  // namespace veloran
