#include "ui/detail_sheet/satellite_detail_view.h"

#include <QAccessible>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <limits>

#include "../ui_fixture.h"
#include "ui/detail_sheet/transmitter_rows.h"
#include "ui/theme.h"
#include "ui/widgets/color_dot.h"
#include "ui/widgets/selectable_value.h"

namespace veloran::test {
namespace {

TEST(DetailSheetTexts, PeriodWithoutMeanMotionIsNone) {
    EXPECT_EQ(periodText(0), "—");
    EXPECT_EQ(periodText(std::numeric_limits<double>::quiet_NaN()), "—");
    TLEData resting;
    for (const auto& [label, value] : orbitalElements(resting)) {
        if (label == "Period" || label == "Semi-major axis") {
            EXPECT_EQ(value, "—") << label;
        }
    }
}

TEST(DetailSheetTexts, EpochBeyondTheCalendarIsNone) {
    EXPECT_EQ(tleEpochString(std::numeric_limits<std::int64_t>::max(), 1, Instant{0}), "—");
    EXPECT_EQ(tleEpochString(2024, std::numeric_limits<double>::infinity(), Instant{0}), "—");
}

TEST(DetailSheetTexts, HighPassesAreGreenFromThirtyDegrees) {
    EXPECT_EQ(maxColor(30), Ink::green);
    EXPECT_EQ(maxColor(29.99), Ink::yellow);
    EXPECT_EQ(maxColor(std::numeric_limits<double>::quiet_NaN()), Ink::yellow);
}

TEST(DetailSheetTexts, FivePassesAreToldWithoutAMoreLine) {
    EXPECT_EQ(morePasses(5), std::nullopt);
    EXPECT_EQ(morePasses(6), "+ 1 more");
}

TEST(DetailSheetTexts, ChannelIsSpokenInWords) {
    Transmitter up = channel("up", 145.9e6, "LSB", true);
    up.ctcss = 67;
    EXPECT_EQ(spokenTransmitter(transmitterLook(up)),
              "Uplink, Voice, 145.900 MHz, LSB, inverting, 67.0 Hz tone");
    EXPECT_EQ(spokenTransmitter(transmitterLook(channel("beacon", 145.8e6))),
              "Downlink, Voice, 145.800 MHz, FM")
        << "only \"up\" counts as an uplink";
}

class SatelliteDetailViewTest : public UiFixture {
  protected:
    static TLEData elements() {
        TLEData tle;
        tle.noradId = 44909;
        tle.line1 = "1 44909U 19096E   26316.50000000  .00000040  00000+0  12345-3 0  9992";
        tle.line2 = "2 44909  82.5200 101.1000 0217000 200.0000 159.0000 12.79700000 12345";
        tle.epochYear = 2026;
        tle.epochDays = 316.5;
        tle.inclination = 82.52;
        tle.meanMotion = 12.797;
        return tle;
    }

    PassList passes(int count) const {
        PassList list;
        for (int i = 0; i < count; ++i) {
            list.push_back(passAt(start + 600 + i * 7000.0, 605, 20 + 10 * i));
        }
        return list;
    }

    SatelliteDetailView* open(const SatellitePtr& satellite) {
        sheet = std::make_unique<SatelliteDetailView>(state, satellite, nullptr);
        sheet->setAttribute(Qt::WA_DeleteOnClose, false);
        sheet->present();
        return sheet.get();
    }

    QString value(const char* label) { return child<SelectableValue>(*sheet, label).text(); }

    std::unique_ptr<SatelliteDetailView> sheet;
};

TEST_F(SatelliteDetailViewTest, TellsAllThatIsKnown) {
    Transmitter up = channel("up", 145.995e6, "LSB");
    const auto satellite = addSatellite("RS-44", 44909, passes(2), {channel("down", 435.64e6), up});
    satellite->tle = elements();
    satellite->sources = {"custom", "amateur"};
    open(satellite);

    EXPECT_EQ(sheet->minimumSize(), QSize(520, 600));
    EXPECT_EQ(sheet->windowTitle(), "RS-44");
    EXPECT_EQ(textOf(*sheet, "detailName"), "RS-44");
    EXPECT_EQ(textOf(*sheet, "detailNorad"), "NORAD 44909");
    EXPECT_EQ(textOf(*sheet, "detailSources"), "amateur, custom");
    EXPECT_EQ(sheet->findChild<ColorDot*>()->color(),
              Theme::color(SatelliteColorPalette::color(44909)));
    EXPECT_EQ(value("Inclination"), "82.5200°");
    EXPECT_EQ(value("Mean Motion"), "12.79700000 rev/day");
    EXPECT_EQ(value("Period"), "112.5 min");
    EXPECT_EQ(value("Line 1"), QString::fromStdString(elements().line1));
    EXPECT_EQ(value("Line 2"), QString::fromStdString(elements().line2));
    EXPECT_TRUE(value("Epoch").startsWith("2026-11-12 12:00:00 UTC ("));
    EXPECT_EQ(textOf(*sheet, "transmittersTitle"), "TRANSMITTERS (2)");
    EXPECT_EQ(textOf(*sheet, "passesTitle"), "UPCOMING PASSES (2)");
    EXPECT_FALSE(isShown(*sheet, "noTransmitters"));
    EXPECT_FALSE(isShown(*sheet, "noPasses"));
    EXPECT_EQ(child<QWidget>(*sheet, "pass1").findChildren<ValueLabel*>().at(0)->text(),
              "Nov 22 00:36")
        << "it rises; it sets at 00:46";
    EXPECT_EQ(child<QWidget>(*sheet, "pass1").findChildren<ValueLabel*>().at(1)->text(), "max 20°");
    EXPECT_EQ(child<QWidget>(*sheet, "pass1").findChildren<ValueLabel*>().at(2)->text(), "10m 05s");
}

TEST_F(SatelliteDetailViewTest, BodyWithoutElementsHasPassesButNoLines) {
    const auto sun = std::make_shared<Satellite>("Sun", -1);
    sun->bodyKind = BodyKind::sun;
    sun->passes = std::make_shared<const PassList>(passes(1));
    open(sun);
    EXPECT_EQ(textOf(*sheet, "noElements"), "No TLE data available");
    EXPECT_EQ(sheet->findChild<QWidget*>("lines"), nullptr);
    EXPECT_EQ(sheet->findChild<QWidget*>("Epoch"), nullptr);
    EXPECT_EQ(textOf(*sheet, "detailNorad"), "NORAD -1");
    EXPECT_TRUE(isShown(*sheet, "pass1"));
    EXPECT_FALSE(isShown(*sheet, "pass2"));
    EXPECT_EQ(textOf(*sheet, "noTransmitters"), "No transmitters listed for this satellite");
    EXPECT_TRUE(isShown(*sheet, "noTransmitters"));
}

TEST_F(SatelliteDetailViewTest, WithoutPassesSaysSo) {
    open(addSatellite("AO-7", 7530, {}));
    EXPECT_TRUE(isShown(*sheet, "noPasses"));
    EXPECT_EQ(textOf(*sheet, "noPasses"), "No passes predicted in the current window");
    EXPECT_FALSE(isShown(*sheet, "pass1"));
}

TEST_F(SatelliteDetailViewTest, FivePassesShowNoMoreLineSixDo) {
    open(addSatellite("AO-7", 7530, passes(5)));
    EXPECT_TRUE(isShown(*sheet, "pass5"));
    EXPECT_FALSE(isShown(*sheet, "morePasses"));
    open(addSatellite("AO-73", 39444, passes(6)));
    EXPECT_TRUE(isShown(*sheet, "morePasses"));
    EXPECT_EQ(textOf(*sheet, "morePasses"), "+ 1 more");
}

TEST_F(SatelliteDetailViewTest, FollowsTheSatelliteWhenRefreshed) {
    const auto satellite = addSatellite("AO-7", 7530, {});
    satellite->tle = elements();
    open(satellite);
    const QString before = value("Epoch");
    satellite->passes = std::make_shared<const PassList>(passes(1));
    satellite->transmitters = {channel("down", 145.95e6)};
    machine.loop.advance(86400);
    sheet->refresh();
    EXPECT_TRUE(isShown(*sheet, "pass1"));
    EXPECT_FALSE(isShown(*sheet, "noPasses"));
    EXPECT_EQ(textOf(*sheet, "transmittersTitle"), "TRANSMITTERS (1)");
    EXPECT_TRUE(isShown(*sheet, "transmitters"));
    EXPECT_NE(value("Epoch"), before);
}

TEST_F(SatelliteDetailViewTest, ManyChannelsAreRowsOfAModelAndScroll) {
    std::vector<Transmitter> many(kMaxTransmitters, channel("down", 435e6));
    open(addSatellite("BUSY", 1, {}, many));
    auto& rows = child<TransmitterRows>(*sheet, "transmitters");
    EXPECT_EQ(rows.height(),
              static_cast<int>(kMaxTransmitters) * TransmitterRowDelegate::rowHeight());
    EXPECT_LT(sheet->findChildren<QWidget*>().size(), 150) << "no widget per row";
    auto& area = child<QScrollArea>(*sheet, "detailSections");
    EXPECT_GT(area.verticalScrollBar()->maximum(), 0);
    const QModelIndex last = rows.model()->index(static_cast<int>(kMaxTransmitters) - 1, 0);
    EXPECT_EQ(last.data(Qt::AccessibleTextRole).toString(), "Downlink, Voice, 435.000 MHz, FM");
}

TEST_F(SatelliteDetailViewTest, SatelliteThatALoadHasReplacedIsShownAnew) {
    const auto before = addSatellite("AO-7", 7530, passes(1));
    before->tle = elements();
    open(before);
    auto after = std::make_shared<Satellite>("AO-7 (OSCAR 7)", 7530);
    after->transmitters = {channel("down", 145.95e6)};
    after->tle = elements();
    after->tle->inclination = 101.99;
    after->tle->line1 = "1 07530 newer";
    after->passes = std::make_shared<const PassList>(passes(3));
    state->satellites = std::vector<SatellitePtr>{after};
    sheet->refresh();
    EXPECT_EQ(textOf(*sheet, "detailName"), "AO-7 (OSCAR 7)");
    EXPECT_EQ(sheet->windowTitle(), "AO-7 (OSCAR 7)");
    EXPECT_EQ(child<SelectableValue>(*sheet, "Inclination").text(), "101.9900°");
    EXPECT_EQ(child<SelectableValue>(*sheet, "Line 1").text(), "1 07530 newer");
    EXPECT_EQ(textOf(*sheet, "transmittersTitle"), "TRANSMITTERS (1)");
    EXPECT_EQ(textOf(*sheet, "passesTitle"), "UPCOMING PASSES (3)");
    EXPECT_TRUE(child<QPushButton>(*sheet, "closeDetail").isDefault());
    after->tle.reset();
    auto without = std::make_shared<Satellite>("AO-7", 7530);
    state->satellites = std::vector<SatellitePtr>{without};
    sheet->refresh();
    EXPECT_EQ(sheet->findChild<SelectableValue*>("Line 1"), nullptr);
    state->satellites = std::vector<SatellitePtr>{};
    sheet->refresh();
    EXPECT_EQ(textOf(*sheet, "detailName"), "AO-7") << "what is gone is still told";
}

TEST_F(SatelliteDetailViewTest, ReloadLeavesTheReaderWhereTheyWere) {
    const std::vector<Transmitter> many(40, channel("down", 435e6));
    open(addSatellite("BUSY", 1, passes(3), many));
    const auto scrolled = [this] {
        return child<QScrollArea>(*sheet, "detailSections").verticalScrollBar();
    };
    ASSERT_GT(scrolled()->maximum(), 300);
    scrolled()->setValue(300);
    auto after = std::make_shared<Satellite>("BUSY", 1, many);
    after->passes = std::make_shared<const PassList>(passes(3));
    state->satellites = std::vector<SatellitePtr>{after};
    sheet->refresh();
    QTest::qWait(0);
    EXPECT_EQ(scrolled()->value(), 300);
    after = std::make_shared<Satellite>("BUSY", 1);
    state->satellites = std::vector<SatellitePtr>{after};
    sheet->refresh();
    QTest::qWait(0);
    EXPECT_EQ(scrolled()->value(), scrolled()->maximum()) << "as far as there is something";
}

TEST_F(SatelliteDetailViewTest, EndlessTextsLeaveTheSheetItsWidth) {
    auto satellite = addSatellite(std::string(5000, 'N'), 1, {},
                                  {channel("down", 435e6, std::string(5000, 'M'))});
    satellite->sources = {std::string(5000, 's')};
    satellite->tle = elements();
    satellite->tle->line1 = std::string(5000, '1');
    satellite->tle->inclination = 1e300;
    open(satellite);
    EXPECT_EQ(sheet->width(), 560);
    EXPECT_LT(sheet->windowTitle().size(), 5000);
    EXPECT_LE(child<QWidget>(*sheet, "Line 1").width(), 560);
    EXPECT_EQ(child<SelectableValue>(*sheet, "Line 1").cursorPosition(), 0);
}

TEST_F(SatelliteDetailViewTest, ValuesCanBeSelectedAndNotEdited) {
    const auto satellite = addSatellite("AO-7", 7530, {});
    satellite->tle = elements();
    open(satellite);
    for (const char* name : {"Inclination", "Epoch", "Line 1", "Line 2"}) {
        auto& field = child<SelectableValue>(*sheet, name);
        EXPECT_TRUE(field.isReadOnly()) << name;
        EXPECT_EQ(field.accessibleName(), name);
        field.selectAll();
        EXPECT_EQ(field.selectedText(), field.text()) << name;
    }
}

TEST_F(SatelliteDetailViewTest, CloseButtonAndEscapeDismissIt) {
    const auto satellite = addSatellite("AO-7", 7530, {});
    open(satellite);
    child<QPushButton>(*sheet, "closeDetail").click();
    EXPECT_FALSE(sheet->isVisible());
    open(satellite);
    QTest::keyClick(sheet.get(), Qt::Key_Escape);
    EXPECT_FALSE(sheet->isVisible());
}

}  // namespace
}  // namespace veloran::test
