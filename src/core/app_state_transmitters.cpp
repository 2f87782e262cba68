// Channels: where they come from, and which one is worked.

#include <algorithm>
#include <utility>

#include "core/app_state.h"
#include "transmitters/transponder_pair.h"

namespace veloran {

/// Reads the database file off the main thread; without a readable one the built-in list serves.
void AppState::loadTransmitterDB(std::function<void()> then) {
    if (!config_.transmitterFile) {
        loadBuiltinTransmitters();
        then();
        return;
    }
    machine_.workers.run([weak = weak_from_this(), &files = machine_.files, &loop = machine_.loop,
                          path = *config_.transmitterFile, then = std::move(then)]() mutable {
        const auto text = files.read(path);
        auto database = text ? decodeTransmitterDatabase(*text) : std::nullopt;
        loop.post([weak, database = std::move(database), then = std::move(then)]() mutable {
            const auto self = weak.lock();
            if (!self) return;
            if (database) {
                for (auto& [id, list] : *database) self->transmitterDB_[id] = std::move(list);
            } else {
                self->loadBuiltinTransmitters();
            }
            then();
        });
    });
}

void AppState::loadBuiltinTransmitters() {
    for (auto& [id, list] : builtinTransmitters()) transmitterDB_[id] = list;
}

/// What the service knows replaces a body's local channels as a whole. The chosen channel stays.
void AppState::refreshTransmittersFromSatNOGS() {
    fetchedChannels_.clear();
    for (const auto& selected : selectedSatellites()) {
        channelCache_.fetchWithCache(selected->id, [weak = weak_from_this(), id = selected->id](
                                                       std::vector<Transmitter> list) {
            if (const auto self = weak.lock()) self->replaceTransmitters(id, std::move(list));
        });
    }
}

/// Whatever their age, and without a request. What the service says meanwhile stays.
void AppState::showCachedTransmitters() {
    for (const auto& selected : selectedSatellites()) {
        channelCache_.fetchCached(selected->id, [weak = weak_from_this(),
                                                 id = selected->id](std::vector<Transmitter> list) {
            const auto self = weak.lock();
            if (!self || self->fetchedChannels_.contains(id)) return;
            self->replaceTransmitters(id, std::move(list));
        });
    }
}

/// For bodies that were not selected when the load asked for channels. The Sun and the Moon have
/// none.
void AppState::fetchNewTransmitters(const std::vector<SatellitePtr>& ticked) {
    std::vector<std::int64_t> ids;
    for (const auto& body : ticked) {
        if (!body->isSelected || body->bodyKind != BodyKind::sgp4) continue;
        if (!fetchedChannels_.contains(body->id)) ids.push_back(body->id);
    }
    if (ids.empty()) return;
    if (!channelBatch_) {
        channelBatch_.emplace(channelCache_, weakly(&AppState::replaceTransmitters));
    }
    channelBatch_->add(ids);
}

void AppState::replaceTransmitters(std::int64_t id, std::vector<Transmitter> list) {
    const auto body = std::find_if(satellites->begin(), satellites->end(),
                                   [id](const auto& satellite) { return satellite->id == id; });
    if (list.empty() || body == satellites->end()) return;
    fetchedChannels_.insert(id);
    (*body)->transmitters = list;
    transmitterDB_[id] = std::move(list);
    objectWillChange.send();
}

void AppState::pickUplink(const Satellite& satellite) {
    selectedUplinkTransmitter = std::nullopt;
    const auto& channel = selectedTransmitter.get();
    if (!channel) return;
    auto uplink = pairedUplink(satellite.transmitters, channel->centerFreqHz());
    if (uplink) selectedUplinkTransmitter = std::move(uplink);
}

void AppState::selectTransmitter(const std::optional<Transmitter>& transmitter,
                                 const SatellitePtr& satellite) {
    selectedTransmitter = transmitter;
    pickUplink(*satellite);
    if (!transmitter) {
        currentSatCalibration = 0;
        return;
    }
    const double center = transmitter->centerFreqHz();
    preferences_.setLastTransmitter(satellite->id, center);
    currentSatCalibration = calibrations_.transponderOffset(satellite->id, center);
}

std::optional<Transmitter> AppState::preferredTransmitter(const Satellite& satellite) const {
    return veloran::preferredTransmitter(satellite.transmitters,
                                         preferences_.lastTransmitterHz(satellite.id));
}

}  // namespace veloran
