#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/pass_info.h"
#include "ui/pass_list/pass_rows.h"
#include "ui/scene/scene.h"

namespace veloran {

inline constexpr double kTimeHeaderHeight = 28;
inline constexpr double kElevationScaleWidth = 32;
/// A threshold for auto-tracking up to this, in degrees, is none.
inline constexpr double kLeastThreshold = 0.5;

/// The stretch of time and the room on screen in which passes stand as arches.
struct TimelineFrame {
    Instant start;     ///< at the left edge
    double hours = 0;  ///< from edge to edge
    double width = 0;
    double height = 0;

    static constexpr double kPad = 8;  ///< above the zenith and below the horizon

    double x(Instant t) const;
    double y(double elevation) const;  ///< degrees
    double horizon() const { return y(0); }
};

// ---- What stands still until the frame changes.

/// Ticks and clock times. Where labels would touch, only every second, third, … one is there.
/// `characterWidth` is that of the label's face.
scene::Scene timeHeaderScene(const TimelineFrame& frame, double characterWidth);
/// The elevations beside the arches, every ten degrees where `height` has room for that.
scene::Scene elevationScaleScene(double height);
/// Grid and horizon, and the threshold of auto-tracking, degrees.
scene::Scene timelineGridScene(const TimelineFrame& frame, double minAutoTrackElevation);

// ---- Passes.

/// All passes, the highest last, so that it is drawn on top.
std::vector<PassRow> passesByElevation(const std::vector<SatellitePtr>& selectedSatellites);

/// Degrees; right at the zenith the computed value may be no number.
double peakElevation(const PredictedPass& pass);

/// Whether a pass from `rise` to `set` is on screen and wide enough to be seen.
bool isDrawn(const TimelineFrame& frame, Instant rise, Instant set);

enum class ArchState { plain, hovered, selected };

/// One pass as an arch with its satellite's name; nothing unless isDrawn.
scene::Scene smoothPassScene(const TimelineFrame& frame, const Satellite& satellite,
                             const PredictedPass& pass, ArchState state);
/// All passes as arches, but for those that lie unseen beneath many others.
/// Nothing follows the pointer, so `hoveredPassId`, a passKey, is absent at present.
scene::Scene archesScene(const TimelineFrame& frame, const std::vector<PassRow>& byElevation,
                         const std::optional<PassInfo>& selectedPass,
                         const std::optional<std::string>& hoveredPassId = std::nullopt);

/// The pass that a tap at `x` means: the highest of those that are up at that time.
std::optional<std::size_t> tappedPass(const TimelineFrame& frame,
                                      const std::vector<PassRow>& byElevation, double x);
/// The passes on screen by the time they rise.
std::vector<std::size_t> drawnPasses(const TimelineFrame& frame,
                                     const std::vector<PassRow>& byElevation);

// ---- What moves.

/// The present; nothing when it is not on screen.
scene::Scene nowMarkerScene(const TimelineFrame& frame, Instant now);
/// The pass that the keyboard stands on.
scene::Scene keyboardMarkScene(const TimelineFrame& frame, const PredictedPass& pass);

}  // namespace veloran
