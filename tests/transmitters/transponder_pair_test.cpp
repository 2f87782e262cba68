#include "transmitters/transponder_pair.h"

#include <gmock/gmock.h>

#include <map>
#include <random>

#include "support/processor_time.h"

namespace veloran::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Transmitter spot(std::string direction, double hz, std::string mode, std::string description = "") {
    Transmitter channel;
    channel.direction = std::move(direction);
    channel.freq = hz;
    channel.mode = std::move(mode);
    channel.description = std::move(description);
    return channel;
}

Transmitter range(std::string direction, double low, double high, std::string mode,
                  std::string description = "") {
    Transmitter channel;
    channel.direction = std::move(direction);
    channel.freqLow = low;
    channel.freqHigh = high;
    channel.mode = std::move(mode);
    channel.description = std::move(description);
    return channel;
}

Transmitter named(std::string direction, std::string description, std::string mode = "FM") {
    Transmitter channel;
    channel.direction = std::move(direction);
    channel.description = std::move(description);
    channel.mode = std::move(mode);
    return channel;
}

/// The choices as places in the list: "2+0" for a pair of downlink and uplink, "1" for a single.
std::vector<std::string> choices(const std::vector<Transmitter>& list) {
    std::map<UniqueId, std::string> places;
    for (std::size_t i = 0; i < list.size(); ++i) places[list[i].id] = std::to_string(i);
    std::vector<std::string> result;
    for (const auto& selection : buildTransmitterSelections(list)) {
        if (const auto* pair = selection.pair()) {
            result.push_back(places[pair->downlink.id] + "+" + places[pair->uplink.id]);
        } else {
            result.push_back(places[selection.single()->id]);
        }
    }
    return result;
}

TEST(TransponderPair, AnEmptyListGivesNoChoices) {
    EXPECT_THAT(choices({}), IsEmpty());
}

TEST(TransponderPair, WidthsPairBelowFiveHundredHertzApart) {
    const auto down = range("down", 435600000, 435700000, "SSB");
    EXPECT_THAT(choices({down, range("up", 145900000, 146000400, "CW")}), ElementsAre("0+1"));
    EXPECT_THAT(choices({down, range("up", 145900000, 146000500, "CW")}), ElementsAre("0", "1"));
    EXPECT_THAT(choices({down, range("up", 145900000, 145999500, "CW")}), ElementsAre("0", "1"));
}

TEST(TransponderPair, OfUplinksOfEqualWidthTheEarlierIsTaken) {
    EXPECT_THAT(choices({range("up", 1000, 61000, "SSB"), range("up", 2000, 62000, "SSB"),
                         range("down", 5000, 65000, "SSB")}),
                ElementsAre("2+0", "1"));
}

TEST(TransponderPair, EqualWidthsOfIncompatibleModesPairByNameOnly) {
    EXPECT_THAT(choices({range("down", 0, 60000, "FM", "A"), range("up", 0, 60000, "USB", "A")}),
                ElementsAre("0", "1"));
    EXPECT_THAT(
        choices({range("down", 0, 60000, "FM", "A (DL)"), range("up", 0, 60000, "USB", "A (UL)")}),
        ElementsAre("0+1"));
}

TEST(TransponderPair, NamesPairWithoutRegardToCaseAndBlanks) {
    EXPECT_THAT(choices({named("down", "Mode B (DL)"), named("up", "mode b (ul)")}),
                ElementsAre("0+1"));
    EXPECT_THAT(choices({named("down", "\tMode B(DL) "), named("up", " mode b  (ul)")}),
                ElementsAre("0+1"));
    EXPECT_THAT(choices({named("down", "ÜBER (DL)"), named("up", "über (UL)")}),
                ElementsAre("0+1"));
}

TEST(TransponderPair, ASuffixAloneHasNoName) {
    EXPECT_THAT(choices({named("down", "(DL)"), named("up", "(UL)")}), ElementsAre("0", "1"));
    EXPECT_THAT(choices({named("down", " \t(DL)"), named("up", "(UL)")}), ElementsAre("0", "1"));
}

TEST(TransponderPair, TheSuffixHasToStandAtTheEnd) {
    EXPECT_THAT(choices({named("down", "A (DL). "), named("up", "A (UL)")}), ElementsAre("0", "1"));
    EXPECT_THAT(choices({named("down", "A (DL)\n"), named("up", "A (UL)")}), ElementsAre("0", "1"));
    EXPECT_THAT(choices({named("down", "A (DL)."), named("up", "A (UL).")}), ElementsAre("0", "1"));
    EXPECT_THAT(choices({named("down", "(DL) A"), named("up", "(UL) A")}), ElementsAre("0", "1"));
    EXPECT_THAT(choices({named("down", "A (FM)"), named("up", "A (CW)")}), ElementsAre("0", "1"));
}

TEST(TransponderPair, NamesPairAcrossModes) {
    EXPECT_THAT(choices({named("up", "A (UL)", "FM"), named("down", "A (DL)", "BPSK")}),
                ElementsAre("1+0"));
}

TEST(TransponderPair, OfUplinksOfOneNameTheEarlierIsTakenFirst) {
    EXPECT_THAT(choices({named("up", "A (UL)"), named("down", "A (DL)"), named("up", "A (UL)"),
                         named("down", "a (dl)"), named("down", "A (DL)")}),
                ElementsAre("1+0", "3+2", "4"));
}

TEST(TransponderPair, TwoCandidatesAreNoPair) {
    EXPECT_THAT(choices({spot("down", 1, "FM"), spot("up", 2, "FM"), spot("up", 3, "FM")}),
                ElementsAre("0", "1", "2"));
}

TEST(TransponderPair, TheFirstOfTwoDownlinksGetsTheOnlyUplink) {
    EXPECT_THAT(choices({spot("down", 1, "FM"), spot("down", 2, "FM"), spot("up", 3, "FM")}),
                ElementsAre("0+2", "1"));
}

TEST(TransponderPair, ACandidateOfAnotherModeFamilyDoesNotCount) {
    EXPECT_THAT(choices({spot("down", 1, "USB"), spot("down", 2, "FM"), spot("up", 3, "FM"),
                         spot("up", 4, "C W"), spot("up", 5, "cw")}),
                ElementsAre("1+2", "0", "3", "4"));
}

TEST(TransponderPair, ARangeWithoutSpotTakesNoPartInElimination) {
    EXPECT_THAT(choices({range("down", 0, 60000, "FM"), spot("up", 3, "FM")}),
                ElementsAre("0", "1"));
}

TEST(TransponderPair, PairsComeInOrderOfTheirRules) {
    EXPECT_THAT(choices({spot("down", 1, "FM"), spot("up", 2, "FM"), named("down", "A (DL)"),
                         named("up", "A (UL)"), range("up", 0, 9000, "CW"),
                         range("down", 0, 9000, "CW"), spot("both", 7, "FM")}),
                ElementsAre("5+4", "2+3", "0+1", "6"));
}

TEST(TransponderPair, DownlinksAloneGiveSinglesWithoutUplink) {
    for (const auto& selection :
         buildTransmitterSelections({spot("down", 1, "FM"), spot("down", 2, "FM")})) {
        EXPECT_TRUE(selection.single() && selection.downlink());
        EXPECT_FALSE(selection.uplink());
    }
}

TEST(TransponderPair, AnUplinkAloneHasNoDownlink) {
    const auto selections = buildTransmitterSelections({spot("up", 145850000.9, "FM", "Uplink")});
    ASSERT_EQ(selections.size(), 1U);
    EXPECT_FALSE(selections[0].downlink());
    EXPECT_TRUE(selections[0].uplink());
    EXPECT_EQ(selections[0].id(), "single-145850000-up");
    EXPECT_EQ(selections[0].label(), "145.850 MHz FM Uplink");
}

TEST(TransponderPair, LabelHasTheUplinkFirst) {
    TransponderPair pair{spot("down", 145900000, "SSB", "Mode B"), spot("up", 435150000, "SSB")};
    EXPECT_EQ(pair.label(), "Mode B (435.150 ↑ / 145.900 ↓)");
    EXPECT_EQ(pair.id(), "pair-145900000-435150000");
    pair.downlink.description = "";
    EXPECT_EQ(pair.label(), "Transponder (435.150 ↑ / 145.900 ↓)");
}

TEST(TransponderPair, HalvesWithoutFrequencyHaveZeroesInTheId) {
    EXPECT_EQ((TransponderPair{named("down", "A"), named("up", "A")}.id()), "pair-0-0");
}

TEST(TransponderPair, EitherHalfInverts) {
    TransponderPair pair{spot("down", 1, "SSB"), spot("up", 2, "SSB")};
    EXPECT_FALSE(pair.inverting());
    pair.uplink.inverting = true;
    EXPECT_TRUE(pair.inverting());
}

TEST(TransponderPair, TheUplinkIsFoundByTheExactCentreOfAPairOnly) {
    const std::vector list{spot("down", 145900000, "FM"), spot("up", 435150000, "FM"),
                           spot("down", 145800000, "BPSK")};
    EXPECT_EQ(pairedUplink(list, 145900000), list[1]);
    EXPECT_EQ(pairedUplink(list, 145900000.001), std::nullopt);
    EXPECT_EQ(pairedUplink(list, 145800000), std::nullopt);
    EXPECT_EQ(pairedUplink(list, 435150000), std::nullopt);
}

TEST(TransponderPair, WithoutASelectedDownlinkTheFirstChoiceIsShown) {
    const auto selections = buildTransmitterSelections(
        {spot("up", 3, "CW"), spot("down", 145900000, "FM"), spot("down", 2, "AM")});
    EXPECT_EQ(shownSelectionId(selections, 145900000), "single-145900000-down");
    EXPECT_EQ(shownSelectionId(selections, 3), "single-3-up");
    EXPECT_EQ(shownSelectionId(selections, std::nullopt), "single-3-up");
    EXPECT_EQ(shownSelectionId({}, 145900000), "");
}

TEST(TransponderPair, LinearModesGoTogetherAndOthersWithThemselves) {
    EXPECT_TRUE(modesAreCompatible("usb", "C W"));
    EXPECT_TRUE(modesAreCompatible("SSB / CW", "cw/ssb"));
    EXPECT_TRUE(modesAreCompatible("F M", "fm"));
    EXPECT_TRUE(modesAreCompatible("", " "));
    EXPECT_FALSE(modesAreCompatible("FM", "USB"));
    EXPECT_FALSE(modesAreCompatible("BPSK", "USB"));
}

TEST(TransponderPair, EveryChannelIsUsedExactlyOnceAndPairsAreHalvesThatMayMeet) {
    std::mt19937_64 random(20261121);
    const auto pick = [&](auto... options) {
        const std::array all{std::string(options)...};
        return all[random() % all.size()];
    };
    for (int round = 0; round < 500; ++round) {
        std::vector<Transmitter> list(random() % 12);
        for (auto& channel : list) {
            channel.direction = pick("down", "up", "down", "up", "both");
            channel.mode = pick("FM", "USB", "c w", "BPSK");
            channel.description = pick("A (DL)", "A (UL)", "a (ul)", "(DL)", "");
            if (random() % 2) channel.freq = 1000.0 * static_cast<double>(random() % 4);
            if (random() % 2) channel.freqLow = 0;
            if (random() % 2) channel.freqHigh = 400.0 * static_cast<double>(random() % 4);
        }
        std::map<UniqueId, int> uses;
        for (const auto& selection : buildTransmitterSelections(list)) {
            if (const auto* pair = selection.pair()) {
                EXPECT_EQ(pair->downlink.direction, "down");
                EXPECT_EQ(pair->uplink.direction, "up");
                ++uses[pair->downlink.id];
                ++uses[pair->uplink.id];
            } else {
                ++uses[selection.single()->id];
            }
        }
        ASSERT_EQ(uses.size(), list.size()) << "round " << round;
        for (const auto& [id, count] : uses) ASSERT_EQ(count, 1) << "round " << round;
    }
}

TEST(TransponderPair, TheLongestListsArePairedWithoutAStall) {
    std::vector<Transmitter> list;
    for (std::size_t i = 0; i < kMaxTransmitters; ++i) {
        // No two widths are near each other, so every downlink looks at every uplink.
        list.push_back(
            range(i % 2 ? "up" : "down", 0, 1000.0 * static_cast<double>(i), "SSB", "same name"));
    }
    const double begin = threadProcessorSeconds();
    EXPECT_EQ(buildTransmitterSelections(list).size(), list.size());
    EXPECT_LT(threadProcessorSeconds() - begin, 2);
}

}  // namespace
}  // namespace veloran::test
