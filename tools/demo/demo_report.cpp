#include "demo/demo_report.h"

#include <fmt/format.h>

#include "demo/process_figures.h"
#include "elements/element_merge.h"

namespace veloran {
namespace {

std::string passText(const std::optional<PassInfo>& picked, Instant now) {
    if (!picked) return "none";
    return fmt::format("{}, {} to {}, highest {} ({})", picked->satName(), picked->riseTimeUTC(),
                       picked->setTimeUTC(), picked->maxElString(),
                       picked->pass.riseTime <= now ? "under way" : "to come");
}

std::string satellitesText(const AppState& state) {
    std::size_t imported = 0;
    std::size_t own = 0;
    for (const auto& satellite : state.satellites.get()) {
        for (const auto& source : satellite->sources) {
            imported += source == kCustomSource ? 1 : 0;
            own += source.starts_with("user:") ? 1 : 0;
        }
    }
    const auto& selected = state.selectedSatelliteIds.get();
    return fmt::format("{} loaded ({} imported, {} from an own source), {} selected{}{}",
                       state.satellites->size(), imported, own, state.selectedSatellites().size(),
                       selected.contains(-1) ? ", with the Sun" : "",
                       selected.contains(-2) ? ", with the Moon" : "");
}

std::string channelText(const std::optional<Transmitter>& channel, std::size_t requests) {
    return fmt::format("{}; service asked {} times", channel ? channel->label() : "none", requests);
}

std::string tuningText(const char* name, const std::optional<SatChannel>& channel) {
    if (!channel) return fmt::format("{} never set", name);
    return fmt::format("{} {:.0f} Hz {:+.1f} Hz {:+.3f} Hz/s", name, channel->restHz,
                       channel->dopplerHz, channel->rateHzS.value_or(0));
}

/// "2, in seconds, of processors in brackets: 2.3 (4.31) 2.2 (4.29)".
std::string searchesText(const std::vector<Demo::Search>& searches) {
    std::string text = fmt::format("{}, in seconds, of processors in brackets:", searches.size());
    for (const auto& search : searches) {
        text += fmt::format(" {:.1f} ({:.2f})", search.wallSeconds, search.processorSeconds);
    }
    return text;
}

std::string fileText(const QString& name) {
    return name.isEmpty() ? "none" : name.toStdString();
}

}  // namespace

std::string demoReport(const AppState& state, const Demo& demo, const LocalStation& station,
                       const DemoOptions& options) {
    const auto& radio = station.radio();
    const auto& tuned = radio.radio();
    const auto& updates = station.radioUpdates();
    std::string text;
    const auto line = [&text](const char* name, const std::string& value) {
        text += fmt::format("{:<12}{}\n", name, value);
    };
    line("satellites", satellitesText(state));
    line("passes", fmt::format("{} in the next 24 h, {} queued, {} conflict resolved",
                               state.allPassesSorted().size(), state.queuedPassIds->size(),
                               demo.resolvedConflicts()));
    line("pass", passText(demo.pickedPass(), state.now()));
    line("channel", channelText(state.selectedTransmitter, station.channelRequests()));
    line("radio",
         fmt::format("{}, dialect {}, {}", state.rigConnected ? "connected" : "not connected",
                     rawValue(state.rigProtocolMode),
                     tuned.isArmed() ? "armed for " + tuned.armedName() : "not armed"));
    line("received", fmt::format("{} downlink and {} uplink updates, {} plain frequencies",
                                 updates.downlink, updates.uplink, updates.plain));
    line("last",
         tuningText("downlink", tuned.downlink()) + "; " + tuningText("uplink", tuned.uplink()));
    line("look angles", fmt::format("azimuth {:.1f}, elevation {:.1f}, range {:.0f} km",
                                    state.currentAzimuth.get(), state.currentElevation.get(),
                                    state.currentRange.get()));
    line("files",
         fmt::format("picture {}, log {}", fileText(options.screenshot), fileText(options.log)));
    if (!demo.searches().empty()) line("searches", searchesText(demo.searches()));
    line("processor", fmt::format("{:.2f} s used", processorSeconds()));
    return text;
}

}  // namespace veloran
