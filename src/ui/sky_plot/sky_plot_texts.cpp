#include "ui/sky_plot/sky_plot_texts.h"

#include <fmt/format.h>

#include <cmath>

#include "ui/formats.h"

namespace veloran {

namespace {

constexpr const char* kNone = "—";
constexpr double kSecondsAroundTca = 20;
constexpr double kMetresPerKm = 1000;

}  // namespace

std::string plotAngleText(double degrees) {
    return std::isfinite(degrees) ? fmt::format("{:7.3f}°", degrees) : kNone;
}

std::string plotRangeText(double km) {
    return std::isfinite(km) ? fmt::format("{:8.3f} km", km) : kNone;
}

std::string plotVelocityText(double rangeRateKmPerS) {
    if (!std::isfinite(rangeRateKmPerS)) return kNone;
    return fmt::format("{}{:6.3f} km/s", rangeRateKmPerS < 0 ? "↑" : "↓",
                       std::abs(rangeRateKmPerS));
}

std::string plotAccelerationText(double rangeRate, double rangeRateAhead) {
    const double kmPerS2 = rangeRateAhead - rangeRate;  // over one second
    if (!std::isfinite(kmPerS2)) return kNone;
    return fmt::format("{:+7.1f} m/s²", kmPerS2 * kMetresPerKm);
}

Ink rangeRateColor(double rangeRateKmPerS) {
    return rangeRateKmPerS < 0 ? Ink::green : Ink::orange;
}

std::string degreeLabel(int degree) {
    return fmt::format("{:03d}", degree);
}

PassPhase passPhase(Instant now, const PredictedPass& pass) {
    if (now < pass.riseTime) return PassPhase::beforeAOS;
    if (now > pass.setTime) return PassPhase::ended;
    if (std::abs(now - pass.peakTime) < kSecondsAroundTca) return PassPhase::atTCA;
    return now < pass.peakTime ? PassPhase::rising : PassPhase::setting;
}

std::string_view passPhaseText(PassPhase phase) {
    switch (phase) {
        case PassPhase::beforeAOS:
            return "waiting";
        case PassPhase::rising:
            return "↑ RISING";
        case PassPhase::atTCA:
            return "★ AT TCA";
        case PassPhase::setting:
            return "↓ SETTING";
        case PassPhase::ended:
            return "ended";
    }
    return kNone;
}

Ink passPhaseColor(PassPhase phase) {
    switch (phase) {
        case PassPhase::rising:
            return Ink::green;
        case PassPhase::atTCA:
            return Ink::yellow;
        case PassPhase::setting:
            return Ink::orange;
        case PassPhase::beforeAOS:
        case PassPhase::ended:
            break;
    }
    return Ink::secondary;
}

std::string passCountdown(Instant now, const PredictedPass& pass) {
    if (now < pass.riseTime) return "-" + formatHMS(pass.riseTime - now);
    if (now <= pass.setTime) return "+" + formatHMS(pass.setTime - now);
    return "ended";
}

std::string formatHMS(double seconds) {
    if (!std::isfinite(seconds)) return kNone;
    const double total = std::round(seconds);  // a double holds what no integer type does
    const double hours = std::floor(total / 3600);
    const double minutes = std::floor(std::fmod(total, 3600) / 60);
    if (hours > 0) return fmt::format("{:.0f}h{:02.0f}m", hours, minutes);
    return fmt::format("{:.0f}m{:02.0f}s", minutes, std::fmod(total, 60));
}

std::string skyDescription(std::string_view name, const std::optional<TopocentricResult>& now,
                           const std::optional<TopocentricResult>& ahead) {
    if (name.empty()) return "No satellite selected";
    if (!now) return fmt::format("{}: position unknown", name);
    if (!(now->elevation > 0)) return fmt::format("{}: below the horizon", name);
    std::string words = fmt::format("{}: azimuth {}, elevation {:.1f}°", name,
                                    azimuthText(now->azimuth), now->elevation);
    if (ahead) words += ahead->elevation >= now->elevation ? ", rising" : ", setting";
    return words;
}

}  // namespace veloran
