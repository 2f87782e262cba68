#include "ui/browser/browser_model.h"

#include <QAbstractItemModelTester>

#include "browser_world.h"

namespace veloran::test {
namespace {

using BrowserModelTest = BrowserFixture;

TEST_F(BrowserModelTest, IsASoundTree) {
    BrowserModel model(state);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setSearch("a");
    state->satellites = std::vector<SatellitePtr>{};
    model.refresh();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(BrowserModelTest, SatelliteStandsInEachOfItsGroups) {
    const BrowserModel model(state);
    EXPECT_EQ(keys(model), (Keys{"celestial", "amateur", "stations", "custom", "uncategorized"}));
    EXPECT_EQ(ids(model, "amateur"), (Ids{7530, 25544})) << "by name";
    EXPECT_EQ(ids(model, "stations"), (Ids{25544}));
    EXPECT_EQ(ids(model, "uncategorized"), (Ids{401}));
    EXPECT_EQ(model.filteredCount(), 5U) << "each counted once";
}

TEST_F(BrowserModelTest, SearchLeavesOnlySectionsThatHoldAMatch) {
    BrowserModel model(state);
    model.setSearch("zArYa");
    EXPECT_EQ(keys(model), (Keys{"amateur", "stations"}));
    model.setSearch("990");
    EXPECT_EQ(keys(model), (Keys{"custom"})) << "part of a catalogue number";
    model.setSearch("nothing");
    EXPECT_EQ(keys(model), Keys{});
    EXPECT_EQ(model.filteredCount(), 0U);
    model.setSearch("");
    EXPECT_EQ(model.filteredCount(), 5U);
}

TEST_F(BrowserModelTest, RefreshWithoutAChangeAnnouncesNothing) {
    BrowserModel model(state);
    const QSignalSpy resets(&model, &BrowserModel::modelReset);
    const QSignalSpy changes(&model, &BrowserModel::dataChanged);
    EXPECT_FALSE(model.refresh());
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(BrowserModelTest, SelectionIsCountedWithoutMakingTheRowsAnew) {
    BrowserModel model(state);
    const QSignalSpy resets(&model, &BrowserModel::modelReset);
    state->toggleSatellite(station);
    EXPECT_TRUE(model.refresh());
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(model.sectionLook(heading(model, "amateur")).selected, 1U);
    EXPECT_EQ(model.sectionLook(heading(model, "stations")).selected, 1U);
    EXPECT_EQ(model.sectionLook(heading(model, "custom")).selected, 0U);
    EXPECT_EQ(model.find("stations", 25544).data(Qt::CheckStateRole).toInt(), Qt::Checked);
}

TEST_F(BrowserModelTest, SubscriptionIsShown) {
    BrowserModel model(state);
    EXPECT_EQ(model.sectionLook(heading(model, "amateur")).isSubscribed, true);
    EXPECT_EQ(model.sectionLook(heading(model, "stations")).isSubscribed, false);
    state->subscribedCategories = std::set<std::string>{"stations"};
    model.refresh();
    EXPECT_EQ(model.sectionLook(heading(model, "amateur")).isSubscribed, false);
    EXPECT_EQ(model.sectionLook(heading(model, "stations")).isSubscribed, true);
}

TEST_F(BrowserModelTest, RowsSpeak) {
    const BrowserModel model(state);
    EXPECT_EQ(heading(model, "stations").data(Qt::DisplayRole).toString(),
              qText(model.section(heading(model, "stations")).label));
    EXPECT_TRUE(heading(model, "amateur")
                    .data(Qt::AccessibleTextRole)
                    .toString()
                    .endsWith(", 2 satellites, subscribed"));
    EXPECT_EQ(model.find("amateur", 7530).data(Qt::AccessibleTextRole),
              "AO-7, not tracked, NORAD 7530, 1 transmitter, 145.950 MHz");
}

TEST_F(BrowserModelTest, FindsOnlyWhatIsThere) {
    const BrowserModel model(state);
    EXPECT_EQ(model.satellite(model.find("stations", 25544)), station);
    EXPECT_FALSE(model.find("stations", 7530).isValid());
    EXPECT_FALSE(model.find("weather", std::nullopt).isValid());
}

}  // namespace
}  // namespace veloran::test
