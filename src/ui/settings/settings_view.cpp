#include "ui/settings/settings_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/formats.h"
#include "ui/settings/doppler_section.h"
#include "ui/settings/observer_section.h"
#include "ui/settings/rest_pattern_section.h"
#include "ui/settings/rig_section.h"
#include "ui/settings/second_site_section.h"
#include "ui/settings/sources_section.h"
#include "ui/theme.h"
#include "ui/timeline/timeline_texts.h"
#include "ui/widgets/disclosure.h"
#include "ui/widgets/divider.h"
#include "ui/widgets/prominent_button.h"

namespace veloran {

namespace {

constexpr int kPadding = 12;
constexpr int kFormMargin = 16;
constexpr QSize kSize{520, 760};

/// Scrolls to what has just been opened, its heading before all, once it is laid out.
void revealLater(QScrollArea& scroll, Disclosure& disclosure) {
    const auto reveal = [&scroll, &disclosure] {
        const int top = disclosure.mapTo(scroll.widget(), QPoint()).y();
        scroll.ensureVisible(0, top + disclosure.height(), 0, kPadding);
        scroll.ensureVisible(0, top, 0, kPadding);
    };
    QMetaObject::invokeMethod(&disclosure, reveal, Qt::QueuedConnection);
}

}  // namespace

SettingsView::SettingsView(std::shared_ptr<AppState> state, QWidget* window)
    : Sheet(tr("Settings"), window), state_(std::move(state)) {
    setObjectName("settings");
    addSections();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeTitle());
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(makeForm(), 1);
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(makeButtons());
    fill();
}

QSize SettingsView::sizeHint() const {
    return kSize.expandedTo(minimumSizeHint());
}

void SettingsView::addSections() {
    const auto add = [this](auto* section) {
        sections_.push_back(section);
        return section;
    };
    observer_ = add(new ObserverSection(state_));
    add(new SecondSiteSection(state_));
    rig_ = add(new RigSection(state_));
    add(new RestPatternSection(state_));
    doppler_ = add(new DopplerSection(state_));
    add(new SourcesSection(state_));
    auto* autoTracking = add(new FormSection(state_, tr("Auto-Tracking")));
    autoTracking->addSlider(tr("Min elevation"), {"minElevation", tr("Min elevation")}, {0, 30},
                            &AppState::minAutoTrackElevation, elevationText);
    autoTracking->addNote(
        tr("Queued passes below this elevation are skipped automatically. 5° is a reasonable "
           "default; raise it if your horizon is obstructed."));
    auto* display = add(new FormSection(state_, tr("Display")));
    display->addSwitch({"polarBearingLine", tr("Bearing line on polar plot")},
                       &AppState::polarBearingLine);
    display->addNote(
        tr("Draw a thin radial line from the polar plot's centre to the live satellite position. "
           "Off by default to keep the chart uncluttered."));
    auto* timeline = add(new FormSection(state_, tr("Timeline")));
    timeline->addSlider(tr("Visible hours"), {"visibleHours", tr("Visible hours")}, {2, 48},
                        &AppState::timelineHoursVisible, hoursText);
}

QWidget* SettingsView::makeTitle() {
    auto* title = new QLabel(tr("Settings"));
    title->setFont(Theme::face(14, QFont::DemiBold));
    title->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    return title;
}

QScrollArea* SettingsView::makeForm() {
    auto* form = new QWidget;
    auto* column = new QVBoxLayout(form);
    column->setContentsMargins(kFormMargin, kPadding, kFormMargin, kPadding);
    column->setSpacing(14);
    for (FormSection* section : sections_) column->addWidget(section);
    column->addStretch();

    auto* scroll = new QScrollArea;
    scroll->setObjectName("settingsForm");
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(form);
    scroll->setMinimumWidth(form->minimumSizeHint().width() +
                            scroll->verticalScrollBar()->sizeHint().width());
    for (Disclosure* disclosure : form->findChildren<Disclosure*>()) {
        connect(disclosure, &Disclosure::opened, scroll,
                [scroll, disclosure] { revealLater(*scroll, *disclosure); });
    }
    return scroll;
}

QWidget* SettingsView::makeButtons() {
    auto* cancel = new QPushButton(tr("Cancel"));
    cancel->setObjectName("cancelButton");
    connect(cancel, &QPushButton::clicked, this, &SettingsView::reject);
    auto* apply = new ProminentButton(tr("Apply"), Ink::blue);
    apply->setObjectName("applyButton");
    apply->setDefault(true);
    connect(apply, &QPushButton::clicked, this, &SettingsView::apply);

    auto* area = new QWidget;
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(apply);
    return area;
}

void SettingsView::fill() {
    const SettingsTexts texts = settingsTexts(*state_);
    observer_->fill(texts);
    rig_->fill(texts);
    doppler_->fill(texts);
    for (FormSection* section : sections_) section->refresh();
}

void SettingsView::refresh() {
    if (!state_->showSettings) return reject();
    for (FormSection* section : sections_) section->refresh();
}

void SettingsView::apply() {
    SettingsTexts texts;
    observer_->collect(texts);
    rig_->collect(texts);
    doppler_->collect(texts);
    applySettings(*state_, plainTexts(std::move(texts)));
    accept();
}

void SettingsView::done(int result) {
    if (state_->showSettings) state_->showSettings = false;
    Sheet::done(result);
}

}  // namespace veloran
