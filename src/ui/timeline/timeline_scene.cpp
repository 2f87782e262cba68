#include "ui/timeline/timeline_scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ranges>
#include <span>

#include "ui/timeline/timeline_texts.h"
#include "ui/timeline/timeline_ticks.h"

namespace veloran {

namespace {

constexpr double kSecondsPerHour = 3600;
constexpr int kElevationStep = 10;

struct TickLook {
    double length;  // in the header
    double opacity, width;
    double gridOpacity, gridWidth;
};

const TickLook& lookOf(TickKind kind) {
    static constexpr std::array<TickLook, 3> looks{
        {{6, 0.5, 1, 0.1, 0.5}, {4, 0.32, 0.7, 0.06, 0.4}, {2, 0.18, 0.5, 0.035, 0.35}}};
    return looks.at(static_cast<std::size_t>(kind));
}

/// Of how many major ticks one carries a label.
int labelStep(const TimelineFrame& frame, std::size_t widestLabel, double characterWidth) {
    constexpr double kGap = 6;
    const double spacing = bestHourStep(frame.hours) / frame.hours * frame.width;
    const double needed = static_cast<double>(widestLabel) * characterWidth + kGap;
    if (!(spacing > 0)) return 1;
    return static_cast<int>(std::clamp(std::ceil(needed / spacing), 1.0, 1e6));
}

scene::Line acrossAt(const TimelineFrame& frame, double y, const scene::Stroke& stroke) {
    return {{0, y}, {frame.width, y}, stroke};
}

void addThreshold(scene::Scene& scene, const TimelineFrame& frame, double elevation) {
    const auto text = autoThresholdText(elevation);
    const double y = frame.y(elevation);
    const bool isInView = y >= 0;  // also false for no number
    if (!text || !isInView) return;
    scene.push_back(acrossAt(frame, y, {Ink::orange, 0.45, 1, 5, 4}));
    scene.push_back(scene::Text{.at = {frame.width - 6, y - 8},
                                .text = *text,
                                .fill = {Ink::orange, 0.85},
                                .pixels = 10,
                                .weight = QFont::Bold,
                                .anchor = scene::Anchor::trailing});
}

/// Where an arch goes. Passes come from propagation, which may give anything for elements that do:
/// a point without a place is left out, and one far away stays within what can be drawn.
class Outline {
  public:
    explicit Outline(const TimelineFrame& frame) : frame_(frame) {}

    void add(Instant t, double elevation) {
        constexpr double kFar = 1e6;
        const double x = frame_.x(t);
        if (!std::isfinite(x)) return;
        const double degrees = std::isnan(elevation) ? 90 : std::clamp(elevation, 0.0, 90.0);
        points_.push_back({std::clamp(x, -kFar, kFar), frame_.y(degrees)});
    }
    std::vector<scene::Point> take() { return std::move(points_); }

  private:
    const TimelineFrame& frame_;
    std::vector<scene::Point> points_;
};

std::vector<scene::Point> outlineOf(const TimelineFrame& frame, const PredictedPass& pass) {
    Outline outline(frame);
    outline.add(pass.riseTime, 0);
    if (pass.trackPoints.size() < 2) {
        outline.add(pass.peakTime, pass.maxElevation);
    } else {
        for (const PassPoint& p : pass.trackPoints) outline.add(p.date, p.elevation);
    }
    outline.add(pass.setTime, 0);
    return outline.take();
}

int nameSize(double maxElevation) {
    if (maxElevation > 80) return 10;
    return maxElevation > 40 ? 9 : 7;
}

struct ArchLook {
    double fillOpacity, lineWidth;
};

ArchLook lookOf(ArchState state, double quality) {
    switch (state) {
        case ArchState::selected:
            return {0.55, 2};
        case ArchState::hovered:
            return {0.5, 1.5};
        case ArchState::plain:
            break;
    }
    return {0.18 + 0.28 * quality, 1};
}

/// How many arches lie over each column of the picture.
class Layers {
  public:
    explicit Layers(double width) : depths_(static_cast<std::size_t>(std::max(0.0, width)) + 1) {}

    /// Lays an arch beneath those so far. False when it cannot be seen there: arches are
    /// translucent, but not through so many.
    bool layBeneath(const TimelineFrame& frame, const PredictedPass& pass) {
        constexpr int kOpaque = 16;
        const std::span columns = columnsOf(frame.x(pass.riseTime), frame.x(pass.setTime));
        if (std::ranges::all_of(columns, [](int depth) { return depth >= kOpaque; })) return false;
        for (int& depth : columns) ++depth;
        return true;
    }

  private:
    std::span<int> columnsOf(double from, double to) {
        const auto last = static_cast<double>(depths_.size() - 1);
        const auto first = static_cast<std::size_t>(std::clamp(from, 0.0, last));
        const auto end = static_cast<std::size_t>(std::clamp(to, 0.0, last)) + 1;
        return std::span(depths_).subspan(first, end - first);
    }

    std::vector<int> depths_;
};

}  // namespace

double TimelineFrame::x(Instant t) const {
    return (t - start) / (hours * kSecondsPerHour) * width;
}

double TimelineFrame::y(double elevation) const {
    return kPad + (height - 2 * kPad) * (1 - elevation / 90);
}

scene::Scene timeHeaderScene(const TimelineFrame& frame, double characterWidth) {
    const auto ticks = timelineTicks(frame.hours, frame.width);
    std::vector<std::string> labels;
    std::size_t widest = 0;
    for (const TimelineTick& tick : ticks) {
        if (tick.kind != TickKind::major) continue;
        labels.push_back(timelineLabel(frame.start, tick.hours, frame.hours));
        widest = std::max(widest, labels.back().size());
    }
    const auto step = static_cast<std::size_t>(labelStep(frame, widest, characterWidth));

    scene::Scene scene;
    std::size_t major = 0;
    for (const TimelineTick& tick : ticks) {
        const TickLook& look = lookOf(tick.kind);
        scene.push_back(scene::Line{{tick.x, kTimeHeaderHeight - look.length},
                                    {tick.x, kTimeHeaderHeight},
                                    {Ink::gray, look.opacity, look.width}});
        if (tick.kind != TickKind::major) continue;
        if (major % step == 0) {
            scene.push_back(scene::Text{.at = {tick.x, kTimeHeaderHeight / 2},
                                        .text = labels[major],
                                        .fill = {Ink::secondary},
                                        .pixels = 14,
                                        .weight = QFont::Medium});
        }
        ++major;
    }
    return scene;
}

scene::Scene elevationScaleScene(double height) {
    constexpr double kLeastSpacing = 13;  // of digits of 15 points
    const TimelineFrame frame{.start = {}, .hours = 0, .width = 0, .height = height};
    const auto hasRoom = [&](int step) { return frame.y(0) - frame.y(step) >= kLeastSpacing; };
    const int step = hasRoom(kElevationStep) ? kElevationStep : hasRoom(30) ? 30 : 90;
    scene::Scene scene;
    for (int elevation = 0; elevation <= 90; elevation += step) {
        scene.push_back(scene::Text{.at = {28, frame.y(elevation)},
                                    .text = std::to_string(elevation) + "°",
                                    .fill = {Ink::gray, 0.7},
                                    .pixels = 15,
                                    .weight = QFont::Medium,
                                    .anchor = scene::Anchor::trailing});
    }
    return scene;
}

scene::Scene timelineGridScene(const TimelineFrame& frame, double minAutoTrackElevation) {
    scene::Scene scene;
    for (const TimelineTick& tick : timelineTicks(frame.hours, frame.width)) {
        const TickLook& look = lookOf(tick.kind);
        scene.push_back(scene::Line{
            {tick.x, 0}, {tick.x, frame.height}, {Ink::gray, look.gridOpacity, look.gridWidth}});
    }
    for (int elevation = 0; elevation <= 90; elevation += kElevationStep) {
        scene.push_back(acrossAt(frame, frame.y(elevation), {Ink::gray, 0.08, 0.5}));
    }
    scene.push_back(acrossAt(frame, frame.horizon(), {Ink::gray, 0.2, 1}));
    addThreshold(scene, frame, minAutoTrackElevation);
    return scene;
}

std::vector<PassRow> passesByElevation(const std::vector<SatellitePtr>& selectedSatellites) {
    return sortedBy([](const PassRow& row) { return peakElevation(row.pass()); },
                    passRows(selectedSatellites));
}

double peakElevation(const PredictedPass& pass) {
    return std::isnan(pass.maxElevation) ? 90 : pass.maxElevation;
}

bool isDrawn(const TimelineFrame& frame, Instant rise, Instant set) {
    const double left = frame.x(rise);
    const double right = frame.x(set);
    return std::isfinite(left) && std::isfinite(right) && right >= 0 && left <= frame.width &&
           right - left >= 1;
}

scene::Scene smoothPassScene(const TimelineFrame& frame, const Satellite& satellite,
                             const PredictedPass& pass, ArchState state) {
    if (!isDrawn(frame, pass.riseTime, pass.setTime)) return {};
    constexpr RgbColor kWhite{1, 1, 1};
    const RgbColor color = SatelliteColorPalette::color(satellite.id);
    const double highest = std::clamp(peakElevation(pass), 0.0, 90.0);
    const double quality = highest / 90;
    const ArchLook look = lookOf(state, quality);
    const std::vector<scene::Point> outline = outlineOf(frame, pass);

    scene::Scene scene;
    scene.push_back(scene::Polygon{outline, {color, look.fillOpacity}});
    scene.push_back(scene::Polyline{outline, {color, 0.5 + 0.4 * quality, look.lineWidth}});
    if (state == ArchState::selected) {
        scene.push_back(scene::Polyline{outline, {kWhite, 0.5, 3}});
        scene.push_back(scene::Polyline{outline, {color, 1, 1.5}});
    }
    const double peak = frame.x(pass.peakTime);
    if (!std::isfinite(peak)) return scene;
    scene.push_back(
        scene::Text{.at = {peak, std::max(frame.y(highest) - 12, TimelineFrame::kPad + 2)},
                    .text = satellite.name,
                    .fill = {color},
                    .pixels = nameSize(highest),
                    .weight = QFont::Bold});
    return scene;
}

scene::Scene archesScene(const TimelineFrame& frame, const std::vector<PassRow>& byElevation,
                         const std::optional<PassInfo>& selectedPass,
                         const std::optional<std::string>& hoveredPassId) {
    const auto stateOf = [&](const PassRow& row) {
        if (isSelectedPass(row, selectedPass)) return ArchState::selected;
        const bool isHovered =
            hoveredPassId && passKey(row.satellite->id, row.pass().riseTime) == *hoveredPassId;
        return isHovered ? ArchState::hovered : ArchState::plain;
    };
    // From the top down, as thousands of favourites would take seconds to draw and show no more.
    Layers layers(frame.width);
    std::vector<scene::Scene> arches;
    for (const PassRow& row : std::views::reverse(byElevation)) {
        if (!isDrawn(frame, row.riseTime, row.setTime)) continue;
        const ArchState state = stateOf(row);
        const bool isSeen = layers.layBeneath(frame, row.pass());
        if (!isSeen && state == ArchState::plain) continue;
        arches.push_back(smoothPassScene(frame, *row.satellite, row.pass(), state));
    }
    scene::Scene scene;
    for (scene::Scene& arch : std::views::reverse(arches)) {
        std::ranges::move(arch, std::back_inserter(scene));
    }
    return scene;
}

std::optional<std::size_t> tappedPass(const TimelineFrame& frame,
                                      const std::vector<PassRow>& byElevation, double x) {
    std::optional<std::size_t> best;
    double highest = -1;
    for (std::size_t i = 0; i < byElevation.size(); ++i) {
        const PassRow& row = byElevation[i];
        const bool isUp = frame.x(row.riseTime) <= x && x <= frame.x(row.setTime);
        if (!isUp || !(peakElevation(row.pass()) > highest)) continue;
        best = i;
        highest = peakElevation(row.pass());
    }
    return best;
}

std::vector<std::size_t> drawnPasses(const TimelineFrame& frame,
                                     const std::vector<PassRow>& byElevation) {
    std::vector<std::size_t> drawn;
    for (std::size_t i = 0; i < byElevation.size(); ++i) {
        const PassRow& row = byElevation[i];
        if (isDrawn(frame, row.riseTime, row.setTime)) drawn.push_back(i);
    }
    std::ranges::stable_sort(drawn, {}, [&](std::size_t i) { return byElevation[i].riseTime; });
    return drawn;
}

scene::Scene nowMarkerScene(const TimelineFrame& frame, Instant now) {
    const double x = frame.x(now);
    if (!(0 <= x && x <= frame.width)) return {};
    const scene::Point top{x, 0};
    const scene::Point bottom{x, frame.height};
    return {scene::Line{top, bottom, {Ink::red, 0.12, 8}},
            scene::Line{top, bottom, {Ink::red, 1, 2}},
            scene::Text{.at = {x - 4, 8},
                        .text = "NOW",
                        .fill = {Ink::red},
                        .pixels = 12,
                        .weight = QFont::Black,
                        .anchor = scene::Anchor::trailing}};
}

scene::Scene keyboardMarkScene(const TimelineFrame& frame, const PredictedPass& pass) {
    return {scene::Polyline{outlineOf(frame, pass), {Ink::blue, 1, 2.5, 4, 3}}};
}

}  // namespace veloran
