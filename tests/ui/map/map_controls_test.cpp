#include "ui/map/map_controls.h"

#include <cmath>

#include "map_bodies.h"
#include "ui/map/segmented_picker.h"

namespace veloran::test {
namespace {

class MapControlsTest : public UiFixture {
  protected:
    MapControls& controls() {
        if (!made) {
            made = std::make_unique<MapControls>(machine.settings);
            made->show();
            made->activateWindow();
        }
        return *made;
    }
    QSlider& slider() { return child<QSlider>(controls(), "trackHours"); }
    SegmentedPicker& picker() { return child<SegmentedPicker>(controls(), "mapStyle"); }
    void clickMiddle(int segment) { QTest::mouseClick(&picker().segment(segment), Qt::LeftButton); }

    std::unique_ptr<MapControls> made;
};

TEST_F(MapControlsTest, BeginsWithTheMapAndNoExtendedTrack) {
    EXPECT_EQ(controls().mapStyle(), MapStyle::standard);
    EXPECT_EQ(controls().extendedTrackHours(), 0);
    EXPECT_EQ(textOf(controls(), "trackHoursText"), "off");
    EXPECT_TRUE(machine.settings.writes.empty());
}

TEST_F(MapControlsTest, RestoresWhatIsStored) {
    machine.settings.set("mapStyle", std::string("hybrid"));
    machine.settings.set("mapTrackHours", 2.5);
    EXPECT_EQ(controls().mapStyle(), MapStyle::hybrid);
    EXPECT_EQ(controls().extendedTrackHours(), 2.5);
    EXPECT_EQ(slider().value(), 5);
    EXPECT_EQ(textOf(controls(), "trackHoursText"), "±2.5h");
    EXPECT_TRUE(picker().segment(2).isChecked());
}

TEST_F(MapControlsTest, UnknownStyleShowsTheFirst) {
    machine.settings.set("mapStyle", std::string("terrain"));
    EXPECT_EQ(controls().mapStyle(), MapStyle::standard);
    EXPECT_TRUE(picker().segment(0).isChecked());
    EXPECT_EQ(machine.settings.text("mapStyle"), "terrain") << "kept until the user chooses";
}

TEST_F(MapControlsTest, StoredHoursOutOfRangeReadAsNone) {
    for (const SettingValue& stored : {SettingValue(-0.5), SettingValue(4.5), SettingValue(1e300),
                                       SettingValue(std::nan("")), SettingValue("two")}) {
        machine.settings.set("mapTrackHours", stored);
        EXPECT_EQ(MapControls(machine.settings).extendedTrackHours(), 0);
    }
}

TEST_F(MapControlsTest, SliderGoesToFourHoursByHalves) {
    QSignalSpy changed(&controls(), &MapControls::extendedTrackHoursChanged);
    slider().setFocus();
    QTest::keyClick(&slider(), Qt::Key_Right);
    EXPECT_EQ(controls().extendedTrackHours(), 0.5);
    EXPECT_EQ(textOf(controls(), "trackHoursText"), "±0.5h");
    EXPECT_EQ(slider().accessibleDescription(), "±0.5h");
    EXPECT_EQ(machine.settings.number("mapTrackHours"), 0.5);
    QTest::keyClick(&slider(), Qt::Key_End);
    EXPECT_EQ(controls().extendedTrackHours(), 4);
    QTest::keyClick(&slider(), Qt::Key_Home);
    EXPECT_EQ(textOf(controls(), "trackHoursText"), "off");
    EXPECT_EQ(changed.count(), 3);
}

TEST_F(MapControlsTest, ClickOnASegmentChoosesItsStyleAndStoresIt) {
    QSignalSpy changed(&controls(), &MapControls::mapStyleChanged);
    clickMiddle(1);
    EXPECT_EQ(controls().mapStyle(), MapStyle::imagery);
    EXPECT_EQ(machine.settings.text("mapStyle"), "imagery");
    EXPECT_FALSE(picker().segment(0).isChecked());
    clickMiddle(1);
    EXPECT_EQ(changed.count(), 1) << "the chosen one again";
}

TEST_F(MapControlsTest, ArrowKeysChooseTheNeighbour) {
    picker().setFocus();
    EXPECT_EQ(controls().focusWidget(), &picker().segment(0));
    QTest::keyClick(controls().focusWidget(), Qt::Key_Right);
    EXPECT_EQ(controls().mapStyle(), MapStyle::imagery);
    EXPECT_EQ(controls().focusWidget(), &picker().segment(1));
    QTest::keyClick(controls().focusWidget(), Qt::Key_Down);
    QTest::keyClick(controls().focusWidget(), Qt::Key_Right);
    EXPECT_EQ(controls().mapStyle(), MapStyle::hybrid) << "the last one";
    QTest::keyClick(controls().focusWidget(), Qt::Key_Left);
    EXPECT_EQ(controls().mapStyle(), MapStyle::imagery);
}

TEST_F(MapControlsTest, OnlyTheChosenSegmentIsReachedByTab) {
    clickMiddle(2);
    EXPECT_EQ(picker().segment(0).focusPolicy(), Qt::ClickFocus);
    EXPECT_EQ(picker().segment(2).focusPolicy(), Qt::StrongFocus);
}

TEST_F(MapControlsTest, EveryControlHasAName) {
    EXPECT_FALSE(slider().accessibleName().isEmpty());
    EXPECT_FALSE(picker().accessibleName().isEmpty());
    EXPECT_EQ(picker().segment(1).text(), "Satellite");
    EXPECT_EQ(child<QWidget>(controls(), "trackControl").toolTip(),
              "Show satellite ground track from (now−X hours) to (now+X hours)");
}

TEST_F(MapControlsTest, PartsStandAtTheRightInTheirSizes) {
    QTest::qWait(0);
    const QRect track = child<QWidget>(controls(), "trackControl").geometry();
    EXPECT_EQ(picker().width(), 200);
    EXPECT_EQ(slider().width(), 100);
    EXPECT_EQ(child<QWidget>(controls(), "trackHoursText").width(), 38);
    EXPECT_EQ(track.right(), picker().geometry().right());
    EXPECT_EQ(picker().y() - track.bottom() - 1, 8);
    EXPECT_EQ(track.width(), 6 + 9 + 4 + 100 + 4 + 38 + 6);
    EXPECT_EQ(picker().segment(0).x(), 0);
    EXPECT_EQ(picker().segment(2).geometry().right(), 199) << "no gap that a click falls through";
    EXPECT_EQ(picker().segment(0).geometry().right() + 1, picker().segment(1).x());
}

}  // namespace
}  // namespace veloran::test
