#include "transmitters/transponder_pair.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <unordered_map>
#include <utility>

#include "base/checked.h"
#include "base/text.h"

namespace veloran {
namespace {

constexpr double kSameWidthHz = 500;

std::string normalizedMode(std::string_view mode) {
    auto text = upperCased(mode);
    std::erase(text, ' ');
    return text;
}

/// Modes are compatible exactly if they are of the same family.
std::string modeFamily(std::string_view mode) {
    auto text = normalizedMode(mode);
    for (const std::string_view linear : {"SSB", "USB", "LSB", "CW", "SSB/CW", "CW/SSB"}) {
        if (text == linear) return "SSB";
    }
    return text;
}

/// The description without its suffix, in lower case; absent without the suffix or without a rest.
/// `suffix` is in lower case and ASCII, as no other letter becomes one of it.
std::optional<std::string> pairingPrefix(std::string_view description, std::string_view suffix) {
    auto text = trimmed(description, Blanks::horizontal);
    if (!lowerCased(text).ends_with(suffix)) return std::nullopt;
    text.remove_suffix(suffix.size());
    text = trimmed(text, Blanks::horizontal);
    if (text.empty()) return std::nullopt;
    return lowerCased(text);
}

/// The three passes of pairing, each over what the earlier ones have left.
class Pairing {
  public:
    explicit Pairing(const std::vector<Transmitter>& list) : list_(list), used_(list.size()) {
        families_.reserve(list.size());
        for (const auto& channel : list) families_.push_back(modeFamily(channel.mode));
    }

    std::vector<TransmitterSelection> run() && {
        pairByWidth();
        pairByName();
        pairByElimination();
        for (std::size_t i = 0; i < list_.size(); ++i) {
            if (!used_[i]) result_.push_back({list_[i]});
        }
        return std::move(result_);
    }

  private:
    using Indices = std::vector<std::size_t>;

    /// Unpaired channels of a direction for which `wanted` holds, in list order.
    template <class Predicate>
    Indices unpaired(std::string_view direction, Predicate wanted) const {
        Indices indices;
        for (std::size_t i = 0; i < list_.size(); ++i) {
            if (!used_[i] && list_[i].direction == direction && wanted(list_[i])) {
                indices.push_back(i);
            }
        }
        return indices;
    }

    void pair(std::size_t down, std::size_t up) {
        result_.push_back({TransponderPair{list_[down], list_[up]}});
        used_[down] = used_[up] = true;
    }

    // Equal width and compatible modes. Where the passbands lie plays no part.
    void pairByWidth() {
        const auto hasRange = [](const Transmitter& channel) {
            return channel.freqLow && channel.freqHigh;
        };
        const auto width = [this](std::size_t i) { return *list_[i].freqHigh - *list_[i].freqLow; };
        const auto ups = unpaired("up", hasRange);
        for (const auto down : unpaired("down", hasRange)) {
            const auto match = std::find_if(ups.begin(), ups.end(), [&](std::size_t up) {
                return !used_[up] && std::abs(width(up) - width(down)) < kSameWidthHz &&
                       families_[up] == families_[down];
            });
            if (match != ups.end()) pair(down, *match);
        }
    }

    // "Mode B (DL)" and "mode b (ul)", as the transmitter service's two-way channels are split.
    void pairByName() {
        const auto any = [](const Transmitter&) { return true; };
        std::unordered_map<std::string, std::deque<std::size_t>> upsByName;
        for (const auto up : unpaired("up", any)) {
            if (auto prefix = pairingPrefix(list_[up].description, "(ul)")) {
                upsByName[std::move(*prefix)].push_back(up);
            }
        }
        for (const auto down : unpaired("down", any)) {
            const auto prefix = pairingPrefix(list_[down].description, "(dl)");
            const auto ups = prefix ? upsByName.find(*prefix) : upsByName.end();
            if (ups == upsByName.end() || ups->second.empty()) continue;
            pair(down, ups->second.front());
            ups->second.pop_front();
        }
    }

    // A downlink with just one compatible uplink left. Families do not overlap, so two candidates
    // stay two, and a family makes one pair at most.
    void pairByElimination() {
        const auto hasSpot = [](const Transmitter& channel) { return channel.freq.has_value(); };
        std::unordered_map<std::string_view, Indices> upsByFamily;
        for (const auto up : unpaired("up", hasSpot)) upsByFamily[families_[up]].push_back(up);
        for (const auto down : unpaired("down", hasSpot)) {
            const auto ups = upsByFamily.find(families_[down]);
            if (ups == upsByFamily.end() || ups->second.size() != 1) continue;
            pair(down, ups->second.front());
            upsByFamily.erase(ups);
        }
    }

    const std::vector<Transmitter>& list_;
    std::vector<bool> used_;
    std::vector<std::string> families_;  // mode family of each channel
    std::vector<TransmitterSelection> result_;
};

}  // namespace

std::string TransponderPair::id() const {
    return fmt::format("pair-{}-{}", checkedInt64(downlink.centerFreqHz()),
                       checkedInt64(uplink.centerFreqHz()));
}

std::string TransponderPair::label() const {
    const std::string_view name =
        downlink.description.empty() ? "Transponder" : std::string_view(downlink.description);
    return fmt::format("{} ({:.3f} ↑ / {:.3f} ↓)", name, uplink.centerFreqHz() / 1e6,
                       downlink.centerFreqHz() / 1e6);
}

std::string TransmitterSelection::id() const {
    if (const auto* both = pair()) return both->id();
    return fmt::format("single-{}-{}", checkedInt64(single()->centerFreqHz()), single()->direction);
}

std::string TransmitterSelection::label() const {
    return pair() ? pair()->label() : single()->label();
}

std::optional<Transmitter> TransmitterSelection::downlink() const {
    if (pair()) return pair()->downlink;
    return single()->direction == "down" ? std::optional(*single()) : std::nullopt;
}

std::optional<Transmitter> TransmitterSelection::uplink() const {
    if (pair()) return pair()->uplink;
    return single()->direction == "up" ? std::optional(*single()) : std::nullopt;
}

std::vector<TransmitterSelection> buildTransmitterSelections(
    const std::vector<Transmitter>& transmitters) {
    return Pairing(transmitters).run();
}

std::optional<Transmitter> pairedUplink(const std::vector<Transmitter>& transmitters,
                                        double downlinkCenterHz) {
    for (auto& selection : buildTransmitterSelections(transmitters)) {
        const auto* both = selection.pair();
        if (both && both->downlink.centerFreqHz() == downlinkCenterHz) return both->uplink;
    }
    return std::nullopt;
}

std::string shownSelectionId(const std::vector<TransmitterSelection>& selections,
                             std::optional<double> downlinkCenterHz) {
    const auto isSelected = [&](const TransmitterSelection& selection) {
        const auto downlink = selection.downlink();
        return downlink && downlinkCenterHz && downlink->centerFreqHz() == *downlinkCenterHz;
    };
    const auto found = std::ranges::find_if(selections, isSelected);
    if (found != selections.end()) return found->id();
    return selections.empty() ? std::string() : selections.front().id();
}

bool modesAreCompatible(std::string_view a, std::string_view b) {
    return modeFamily(a) == modeFamily(b);
}

}  // namespace veloran
