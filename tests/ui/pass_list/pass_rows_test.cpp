#include "ui/pass_list/pass_rows.h"

#include "../ui_fixture.h"

namespace veloran::test {
namespace {

class PassRowsTest : public UiFixture {
  protected:
    static PassRowLook lookOf(const PassRow& row, bool isSelected, bool isNext, Instant now) {
        return passRowLook(row, rowMoment(row, isSelected, std::nullopt, isNext, now));
    }
    std::vector<PassRow> rows() { return sortedPassRows(state->selectedSatellites()); }
};

TEST_F(PassRowsTest, RowsAreTheSortedPassesOfTheState) {
    addSatellite("A", 1, {passAt(start + 300), passAt(start + 9000)});
    addSatellite("B", 2, {passAt(start + 100), passAt(start + 6000)});
    addSatellite("C", 3, {passAt(start + 50)})->isSelected = false;
    const auto expected = state->allPassesSorted();
    const auto actual = rows();
    ASSERT_EQ(actual.size(), 4u);
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        EXPECT_EQ(actual[i].satellite, expected[i].first);
        EXPECT_EQ(actual[i].pass().riseTime, expected[i].second.riseTime);
    }
}

TEST_F(PassRowsTest, NextIsTheFirstThatIsStillToRise) {
    EXPECT_EQ(nextPassIndex(rows(), start), std::nullopt);
    addSatellite("A", 1, {passAt(start - 100), passAt(start), passAt(start + 1)});
    EXPECT_EQ(nextPassIndex(rows(), start), 2u) << "one that rises now has risen";
    EXPECT_EQ(nextPassIndex(rows(), start + 1), std::nullopt);
}

TEST_F(PassRowsTest, PassInProgressIsGreenAndNotNext) {
    addSatellite("A", 1, {passAt(start - 10, 600, 61.4)});
    const auto list = rows();
    EXPECT_EQ(nextPassIndex(list, start), std::nullopt) << "no later pass, no orange row";
    const PassRowLook look = lookOf(list[0], false, false, start);
    EXPECT_EQ(look.nameInk, (Tint{Ink::green, 1}));
    EXPECT_EQ(look.timeInk, (Tint{Ink::green, 1}));
    EXPECT_EQ(look.relativeInk, (Tint{Ink::green, 0.7}));
    EXPECT_EQ(look.relative, "now");
    EXPECT_EQ(look.background, (Tint{Ink::green, 0.08}));
}

TEST_F(PassRowsTest, SelectedPassInProgressIsBlue) {
    addSatellite("A", 1, {passAt(start - 10)});
    const PassRowLook look = lookOf(rows()[0], true, true, start);
    EXPECT_EQ(look.background, (Tint{Ink::blue, 0.15}));
    EXPECT_EQ(look.nameInk, (Tint{Ink::green, 1})) << "its name stays green";
}

TEST_F(PassRowsTest, ComingPassIsPlainAndTheNextOneOrange) {
    addSatellite("A", 1, {passAt(start + 3660, 605.9, 30)});
    const PassRowLook next = lookOf(rows()[0], false, true, start);
    EXPECT_EQ(next.background, (Tint{Ink::orange, 0.06}));
    const PassRowLook later = lookOf(rows()[0], false, false, start);
    EXPECT_EQ(later.background, std::nullopt);
    EXPECT_EQ(later.name, "A");
    EXPECT_EQ(later.time, "01:27") << "it rises; it sets at 01:37";
    EXPECT_EQ(later.nameInk, (Tint{Ink::primary, 1}));
    EXPECT_EQ(later.timeInk, (Tint{Ink::secondary, 1}));
    EXPECT_EQ(later.relative, "in 1h 1m");
    EXPECT_EQ(later.relativeInk, (Tint{Ink::secondary, 0.7}));
    EXPECT_EQ(later.elevation, "30°");
    EXPECT_EQ(later.elevationInk, (Tint{Ink::yellow, 1}));
    EXPECT_EQ(later.duration, "10m05s");
    EXPECT_EQ(later.direction, "E-W");
}

TEST_F(PassRowsTest, InProgressIncludesBothEnds) {
    addSatellite("A", 1, {passAt(start, 600)});
    const PassRow row = rows()[0];
    const auto background = [&](double t) {
        return lookOf(row, false, false, start + t).background;
    };
    EXPECT_EQ(background(-0.001), std::nullopt);
    EXPECT_TRUE(background(0));
    EXPECT_TRUE(background(600));
    EXPECT_EQ(background(600.001), std::nullopt);
}

TEST_F(PassRowsTest, SelectionGoesBySatelliteNumberAndRiseTime) {
    const auto a = addSatellite("A", 1, {passAt(start), passAt(start + 6000)});
    select(a, std::nullopt);
    const auto list = rows();
    EXPECT_TRUE(isSelectedPass(list[0], state->selectedPass));
    EXPECT_FALSE(isSelectedPass(list[1], state->selectedPass));
    EXPECT_FALSE(isSelectedPass(list[0], std::nullopt));
}

TEST_F(PassRowsTest, SelectionStaysThroughANewComputation) {
    const auto a = addSatellite("A", 1, {passAt(start, 600)});
    select(a, std::nullopt);
    const auto found = [&](Instant rise, double seconds) {
        a->passes = std::make_shared<const PassList>(PassList{passAt(rise, seconds)});
        return isSelectedPass(rows()[0], state->selectedPass);
    };
    EXPECT_TRUE(found(start + 1e-6, 600)) << "other last bits";
    EXPECT_TRUE(found(start - 4, 603)) << "newer elements";
    EXPECT_TRUE(found(start + 300, 300)) << "as of another place, amid the pass";
    EXPECT_FALSE(found(start + 600, 600)) << "the next one";
}

TEST_F(PassRowsTest, RowThatTheQueueWillSkipSaysWhy) {
    addSatellite("A", 1, {passAt(start)});
    const auto warningOf = [&](std::optional<QueueEntryState> queued) {
        return passRowLook(rows()[0], rowMoment(rows()[0], false, queued, false, start)).warning;
    };
    EXPECT_EQ(warningOf(QueueEntryState::tooLow),
              "Will not be tracked: stays under the minimum elevation");
    EXPECT_EQ(warningOf(QueueEntryState::gone),
              "Will not be tracked: the pass has moved or is no longer predicted");
    for (const auto queued : {QueueEntryState::waiting, QueueEntryState::held,
                              QueueEntryState::tracked, QueueEntryState::ended}) {
        EXPECT_EQ(warningOf(queued), "");
    }
    EXPECT_EQ(warningOf(std::nullopt), "");
}

TEST_F(PassRowsTest, RowIsSpokenInOneSentence) {
    addSatellite("RS-44", 44909, {passAt(start + 120, 600, 61.4)});
    const std::string spoken = spokenPassRow(lookOf(rows()[0], false, true, start));
    EXPECT_EQ(spoken.substr(0, 13), "RS-44, rises ");
    EXPECT_NE(spoken.find("in 2m, highest 61°, lasts 10m00s, E-W"), std::string::npos) << spoken;
    EXPECT_FALSE(spoken.ends_with("selected")) << spoken;
    const std::string selected = spokenPassRow(lookOf(rows()[0], true, true, start));
    EXPECT_EQ(selected, spoken + ", selected");
}

}  // namespace
}  // namespace veloran::test
