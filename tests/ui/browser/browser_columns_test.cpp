#include "ui/browser/browser_columns.h"

#include <gtest/gtest.h>

namespace veloran::test {
namespace {

const QRect kRow(0, 100, 500, 24);

TEST(SatelliteColumns, LieSideBySideInTheToldWidths) {
    const SatelliteColumns c = satelliteColumns(kRow);
    EXPECT_EQ(c.number.width(), 50);
    EXPECT_EQ(c.age.width(), 36);
    EXPECT_EQ(c.channels.width(), 28);
    EXPECT_EQ(c.frequency.width(), 100);
    EXPECT_EQ(c.dot.width(), 8);
    int left = 4 + 10;
    for (const QRect& column :
         {c.checkBox, c.dot, c.name, c.number, c.age, c.channels, c.frequency, c.details}) {
        EXPECT_EQ(column.left(), left);
        EXPECT_EQ(column.top(), 100);
        EXPECT_EQ(column.height(), 24);
        left = column.right() + 1 + 6;
    }
    EXPECT_EQ(left, 500 - 4 - 10 + 6);
}

TEST(SatelliteColumns, NameGivesWayInANarrowRow) {
    EXPECT_LE(satelliteColumns({0, 0, 120, 24}).name.width(), 0);
}

TEST(SatelliteColumns, CheckBoxAndDetailsAnswer) {
    const SatelliteColumns c = satelliteColumns(kRow);
    EXPECT_EQ(c.partAt(c.checkBox.center()), RowPart::checkBox);
    EXPECT_EQ(c.partAt(c.details.center()), RowPart::details);
    EXPECT_EQ(c.partAt(c.name.center()), RowPart::nothing);
    EXPECT_EQ(c.partAt(c.frequency.center()), RowPart::nothing);
}

TEST(SectionColumns, HoldOnlyWhatTheSectionShows) {
    const SectionColumns celestial = sectionColumns(kRow, {.label = "Celestial", .satellites = 2});
    EXPECT_TRUE(celestial.clear.isEmpty());
    EXPECT_TRUE(celestial.secondBar.isEmpty());
    EXPECT_TRUE(celestial.subscription.isEmpty());
    EXPECT_TRUE(celestial.selected.isEmpty());
    EXPECT_FALSE(celestial.all.isEmpty());
    EXPECT_FALSE(celestial.none.isEmpty());

    const SectionColumns custom =
        sectionColumns(kRow, {.label = "Custom", .satellites = 2, .selected = 1, .canClear = true});
    EXPECT_FALSE(custom.clear.isEmpty());
    EXPECT_FALSE(custom.selected.isEmpty());
    EXPECT_TRUE(custom.subscription.isEmpty());
}

TEST(SectionColumns, EveryButtonAnswersAndTheLabelOpens) {
    const SectionColumns group = sectionColumns(
        kRow, {.label = "Amateur", .satellites = 2, .selected = 1, .isSubscribed = true});
    EXPECT_EQ(group.partAt(group.chevron.center()), RowPart::title);
    EXPECT_EQ(group.partAt(group.label.center()), RowPart::title);
    EXPECT_EQ(group.partAt(group.selected.center()), RowPart::nothing);
    EXPECT_EQ(group.partAt(group.all.center()), RowPart::all);
    EXPECT_EQ(group.partAt(group.none.center()), RowPart::none);
    EXPECT_EQ(group.partAt(group.subscription.center()), RowPart::subscription);
    const SectionColumns custom = sectionColumns(kRow, {.label = "Custom", .canClear = true});
    EXPECT_EQ(custom.partAt(custom.clear.center()), RowPart::clear);
}

TEST(SectionColumns, LongLabelIsCutBeforeTheCounts) {
    const SectionLook look{.label = std::string(200, 'W'), .satellites = 12, .selected = 3};
    const SectionColumns c = sectionColumns(kRow, look);
    EXPECT_LT(c.label.right(), c.count.left());
    EXPECT_LT(c.count.right(), c.selected.left());
    EXPECT_LT(c.selected.right(), c.all.left());
    EXPECT_FALSE(c.selected.isEmpty());
}

}  // namespace
}  // namespace veloran::test
