#include "ui/sky_plot/disk_view.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/q_text.h"
#include "ui/scene/mini_polar_plot.h"
#include "ui/scene/scene_painter.h"
#include "ui/sky_plot/live_look.h"
#include "ui/sky_plot/sky_plot_texts.h"

namespace veloran {

DiskView::DiskView(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent), state_(std::move(state)), frames_(state_->loop(), this) {
    setObjectName("skyDisk");
    setAccessibleName(tr("Sky plot"));
    connect(&frames_, &FrameTimer::frame, this, &DiskView::showFrame);
    refresh();
    describe();
}

void DiskView::refresh() {
    const auto& pass = state_->selectedPass.get();
    const auto id = pass ? std::optional(pass->id) : std::nullopt;
    if (id == shownPass_) return;
    shownPass_ = id;
    standing_.invalidate();
    update();
    describe();
}

void DiskView::showFrame() {
    const QRect before = livePlace_;
    const std::optional<LiveSky> sky = readSky();
    live_ = sky ? liveSkyScene(disk(), *sky) : scene::Scene{};
    livePlace_ = live_.empty() ? QRect() : reach(*sky);
    update(before.united(livePlace_));
}

void DiskView::describe() {
    const SatellitePtr satellite = plottedSatellite(*state_);
    const Instant now = state_->now();
    const QString words =
        qText(skyDescription(satellite ? satellite->name : std::string(), liveAzEl(*state_, now),
                             liveAzEl(*state_, now, kMotionSeconds)));
    if (words != accessibleDescription()) setAccessibleDescription(words);
}

void DiskView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    standing_.draw(painter, size(), [this] { return standingScene(); });
    ScenePainter(painter, Ink::window).draw(live_);
}

void DiskView::resizeEvent(QResizeEvent*) {
    showFrame();
}

void DiskView::showEvent(QShowEvent*) {
    showFrame();
}

scene::Scene DiskView::standingScene() const {
    scene::Scene scene = skyChartScene(disk());
    if (const auto& pass = state_->selectedPass.get()) drawPassTrack(scene, disk(), pass->pass);
    return scene;
}

std::optional<LiveSky> DiskView::readSky() const {
    const Instant now = state_->now();
    const auto look = liveAzEl(*state_, now);
    if (!look) return std::nullopt;
    return LiveSky{.time = now,
                   .now = *look,
                   .ahead = liveAzEl(*state_, now, kMotionSeconds),
                   .bearingLine = state_->polarBearingLine};
}

/// What the live layer may touch.
QRect DiskView::reach(const LiveSky& sky) const {
    const SkyDisk d = disk();
    const scene::Point at = polarPoint(sky.now.azimuth, sky.now.elevation, d.center, d.radius);
    const QMarginsF around(kBeaconReach, kBeaconReach, kBeaconReach, kBeaconReach);
    QRectF area = QRectF(at.x, at.y, 0, 0).marginsAdded(around);
    if (sky.bearingLine) {
        const scene::Point rim = polarPoint(sky.now.azimuth, 0, d.center, d.radius);
        const QRectF line(std::min(rim.x, d.center.x), std::min(rim.y, d.center.y),
                          std::abs(rim.x - d.center.x), std::abs(rim.y - d.center.y));
        area = area.united(line.marginsAdded({1, 1, 1, 1}));
    }
    return area.toAlignedRect();
}

}  // namespace veloran
