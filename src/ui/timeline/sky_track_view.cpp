#include "ui/timeline/sky_track_view.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>
#include <algorithm>

#include "ui/commands.h"
#include "ui/q_text.h"
#include "ui/theme.h"
#include "ui/timeline/favorites_list.h"
#include "ui/timeline/timeline_canvas.h"
#include "ui/timeline/timeline_texts.h"
#include "ui/widgets/divider.h"
#include "ui/widgets/mini_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr const char* kShowFavoritesKey = "skyTrackShowFavorites";

bool readShowFavorites(const SettingsStore& settings) {
    const auto stored = settings.value(kShowFavoritesKey);
    const bool* shows = stored ? std::get_if<bool>(&*stored) : nullptr;
    return !shows || *shows;
}

std::optional<UniqueId> firstChannelOf(const Satellite& satellite) {
    const auto& channels = satellite.transmitters;
    return channels.empty() ? std::nullopt : std::optional(channels.front().id);
}

}  // namespace

SkyTrackView::SkyTrackView(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent),
      state_(std::move(state)),
      showSatSelector_(readShowFavorites(state_->settings())),
      header_(makeHeader()),
      upperDivider_(new Divider(Qt::Horizontal, this)),
      canvas_(new TimelineCanvas(state_, this)),
      lowerDivider_(new Divider(Qt::Horizontal, this)),
      list_(new FavoritesList(state_, this)) {
    connect(list_, &FavoritesList::browserRequested, this, &SkyTrackView::browserRequested);
    connect(&everyMinute_, &LoopTimer::timeout, list_, &FavoritesList::updateLooks);
    everyMinute_.start();
    refresh();
}

void SkyTrackView::refresh() {
    if (!areFavoritesAsShown()) readFavorites();
    canvas_->refresh();
    list_->refresh();
    toggle_->setSymbol(showSatSelector_ ? Symbol::chevronDownDisc : Symbol::chevronRightDisc);
    toggle_->setRemark(qText(countText(state_->selectedSatelliteIds->size())),
                       {13, QFont::Medium, Ink::secondary});
    hours_->setText(hoursText(state_->timelineHoursVisible));
    arrange();
}

// ---- The favourites.

/// Asked with every tick, so it copies nothing that is shared.
bool SkyTrackView::areFavoritesAsShown() const {
    // A long search fills one list after the other: they are shown when it is done.
    const bool isFilling = state_->passProgress->has_value();
    auto shown = favorites_.begin();
    for (const SatellitePtr& satellite : state_->satellites.get()) {
        if (!satellite->isSelected) continue;
        if (shown == favorites_.end() || shown->satellite != satellite ||
            (shown->passes != satellite->passes && !isFilling) ||
            shown->firstChannel != firstChannelOf(*satellite)) {
            return false;
        }
        ++shown;
    }
    return shown == favorites_.end();
}

void SkyTrackView::readFavorites() {
    const auto satellites = state_->selectedSatellites();
    favorites_.clear();
    for (const SatellitePtr& satellite : satellites) {
        favorites_.push_back({satellite, satellite->passes, firstChannelOf(*satellite)});
    }
    canvas_->setPasses(passesByElevation(satellites));
    list_->setSatellites(satellites);
}

// ---- Layout.

QWidget* SkyTrackView::makeHeader() {
    auto* header = new QWidget(this);
    header->setAutoFillBackground(true);
    toggle_ = new MiniButton(Symbol::chevronDownDisc, 14, tr("FAVORITES"),
                             {13, QFont::Black, Ink::primary}, 4);
    toggle_->setObjectName("favoritesToggle");
    toggle_->setAccessibleName(tr("Favorites list"));
    toggle_->setToolTip(tr("Show / hide the favorites list"));
    connect(toggle_, &QAbstractButton::clicked, this, [this] { showFavorites(!showSatSelector_); });
    auto* now = new MiniButton(Symbol::location, 12, tr("NOW"), {14, QFont::Bold, Ink::primary}, 3);
    now->setObjectName("scrollToNow");
    now->setAccessibleName(tr("Scroll to now"));
    connect(now, &QAbstractButton::clicked, this, [this] { scrollToNow(*state_); });
    hours_ = new ValueLabel({14, QFont::Medium, Ink::secondary});
    hours_->setObjectName("timelineHours");
    hours_->setAccessibleName(tr("Hours shown"));
    hours_->setWidthRange(24, 24);
    hours_->setAlignment(Qt::AlignHCenter);

    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(6);
    row->addWidget(new ValueLabel({15, QFont::Black, Ink::secondary}, tr("SKYTRACK")));
    row->addStretch();
    row->addWidget(toggle_);
    row->addWidget(now);
    row->addWidget(makeZoomButton(Symbol::zoomIn, "timelineZoomIn", tr("Zoom in"), zoomIn));
    row->addWidget(hours_);
    row->addWidget(makeZoomButton(Symbol::zoomOut, "timelineZoomOut", tr("Zoom out"), zoomOut));
    return header;
}

QWidget* SkyTrackView::makeZoomButton(Symbol symbol, const char* name, const QString& words,
                                      void (*zoom)(AppState&)) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(symbolIcon(symbol));
    button->setIconSize({15, 15});
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAccessibleName(words);
    connect(button, &QAbstractButton::clicked, this, [this, zoom] { zoom(*state_); });
    return button;
}

void SkyTrackView::showFavorites(bool shows) {
    showSatSelector_ = shows;
    state_->settings().set(kShowFavoritesKey, shows);
    refresh();
}

void SkyTrackView::arrange() {
    const int headerHeight = header_->sizeHint().height();
    const int top = headerHeight + upperDivider_->height();
    const int room = height() - top - lowerDivider_->height();
    const int listHeight =
        showSatSelector_ ? list_->heightIn(room, TimelineCanvas::kLeastHeight) : 0;
    const int canvasHeight =
        std::max(0, listHeight > 0 ? room - listHeight : room + lowerDivider_->height());
    header_->setGeometry(0, 0, width(), headerHeight);
    upperDivider_->setGeometry(0, headerHeight, width(), upperDivider_->height());
    canvas_->setGeometry(0, top, width(), canvasHeight);
    lowerDivider_->setGeometry(0, top + canvasHeight, width(), lowerDivider_->height());
    list_->setGeometry(0, top + canvasHeight + lowerDivider_->height(), width(), listHeight);
    lowerDivider_->setVisible(listHeight > 0);
    list_->setVisible(listHeight > 0);
}

void SkyTrackView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Theme::color(Ink::window));
}

void SkyTrackView::resizeEvent(QResizeEvent*) {
    arrange();
}

}  // namespace veloran
