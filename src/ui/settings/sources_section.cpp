#include "ui/settings/sources_section.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/commands.h"
#include "ui/q_text.h"
#include "ui/satellite_texts.h"
#include "ui/settings/custom_sources.h"
#include "ui/settings/settings_form.h"
#include "ui/settings/source_texts.h"
#include "ui/widgets/disclosure.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

/// The categories by their section, both in the order of their first mention.
std::vector<std::pair<std::string, std::vector<TLECategory>>> bySection(
    const std::vector<TLECategory>& categories) {
    std::vector<std::pair<std::string, std::vector<TLECategory>>> sections;
    for (const auto& category : categories) {
        auto found = std::ranges::find(sections, category.section,
                                       [](const auto& section) { return section.first; });
        if (found == sections.end()) found = sections.insert(found, {category.section, {}});
        found->second.push_back(category);
    }
    return sections;
}

}  // namespace

SourcesSection::SourcesSection(std::shared_ptr<AppState> state)
    : FormSection(std::move(state), tr("TLE Sources")) {
    for (const auto& [section, categories] :
         bySection(this->state().elements().builtinCategories())) {
        addGroups(qText(section), categories);
    }
    addCustomSources();
    addAge();
    showSubscriptions();
    showDownloads();
}

void SourcesSection::addGroups(const QString& section, const std::vector<TLECategory>& categories) {
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 2, 0, 4);
    column->setSpacing(4);
    GroupSection added{nullptr, {}};
    for (const auto& category : categories) {
        auto* row = makeGroup(category);
        column->addWidget(row);
        added.groups.push_back({category.name, row});
    }
    added.disclosure = new Disclosure(section, 11, content);
    added.disclosure->setObjectName("section " + section);
    addPart(added.disclosure);
    sections_.push_back(std::move(added));
}

SwitchRow* SourcesSection::makeGroup(const TLECategory& category) {
    auto* row = new SwitchRow({"group " + qText(category.name), qText(category.description)}, 12);
    connect(row, &SwitchRow::switched, this,
            [this, key = category.name](bool on) { subscribe(state(), key, on); });
    return row;
}

void SourcesSection::addCustomSources() {
    custom_ = new CustomSources(sharedState());
    customDisclosure_ = new Disclosure(tr("Custom URLs"), 12, custom_);
    customDisclosure_->setObjectName("customSources");
    addPart(customDisclosure_);
    connect(custom_, &CustomSources::sourcesChanged, this, &SourcesSection::showCustomCount);
    showCustomCount();
}

void SourcesSection::addAge() {
    age_ = new ValueLabel({11, QFont::Normal, Ink::green, 1, false});
    age_->setObjectName("tleAge");
    age_->setElastic();
    auto* refreshNow = makeButton({"refreshNow", tr("Refresh Now")}, tr("Refresh Now"), 11);
    connect(refreshNow, &QPushButton::clicked, this, [this] { state().refreshTLEs(); });
    auto* area = new QWidget;
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(age_, 1);
    row->addWidget(refreshNow);
    addPart(area);
    follow([this] {
        age_->setText(tr("TLE age: ") + qText(state().tleAgeString()));
        age_->setTextStyle({11, QFont::Normal, elementAgeColor(state().tleAge), 1, false});
    });
}

void SourcesSection::refresh() {
    FormSection::refresh();
    if (shown_ != state().subscribedCategories.get()) showSubscriptions();
    constexpr double kSecondsOfAText = 30;  // its ages go by minutes
    const bool isOld = std::abs(state().now() - shownAt_) >= kSecondsOfAText;
    if (isOld || shownDownloads_ != state().downloads.get()) showDownloads();
}

void SourcesSection::showDownloads() {
    shownDownloads_ = state().downloads;
    shownAt_ = state().now();
    for (const auto& section : sections_) {
        for (const auto& group : section.groups) {
            group.row->setDetail(qText(sourceDetail(shownDownloads_, group.key, shownAt_)));
        }
    }
    custom_->showDownloads();
}

void SourcesSection::showSubscriptions() {
    shown_ = state().subscribedCategories;
    for (const auto& section : sections_) {
        std::size_t subscribed = 0;
        for (const auto& group : section.groups) {
            const bool on = shown_.contains(group.key);
            group.row->display(on);
            subscribed += on ? 1 : 0;
        }
        section.disclosure->setDetail(qText(sectionCount(subscribed, section.groups.size())));
    }
    custom_->showSubscriptions();
}

void SourcesSection::showCustomCount() {
    const std::size_t count = custom_->sources().size();
    customDisclosure_->setDetail(count > 0 ? QString::number(count) : QString());
}

}  // namespace veloran
