#include "ui/sky_plot/sky_plot_layout.h"

#include <gtest/gtest.h>

#include "ui/sky_plot/look_angle_rows.h"

namespace veloran {
namespace {

constexpr int kLeastDisk = 140;
constexpr int kRows = static_cast<int>(kTableRows);

/// A face like any mono face, with 14 characters to a value.
FaceMetrics face(int pixels) {
    return {pixels * 7 / 6, pixels * 3, pixels * 14 * 6 / 10};
}

SkyPlotLayout arranged(int width, int height) {
    return arrangeSkyPlot({width, height}, kLeastDisk, face);
}

TEST(SkyTable, ToldSizesAtEighteen) {
    const TableLayout table = naturalTable(18, face(18));
    EXPECT_EQ(table.sidePadding, 8);
    EXPECT_EQ(table.edgePadding, 8);
    EXPECT_EQ(table.labelWidth, 56);
    EXPECT_EQ(table.labelGap, 6);
    EXPECT_EQ(table.pitch, 21 + 1);
    EXPECT_EQ(table.rowTop(0), 8);
    EXPECT_EQ(table.rowTop(1), 30);
    EXPECT_EQ(table.dividerTop(), table.rowTop(6) + 21 + 1 + 2);
    EXPECT_EQ(table.rowTop(7), table.dividerTop() + 1 + 2 + 1);
    EXPECT_EQ(table.height(), table.rowTop(11) + 21 + 8);
}

TEST(SkyTable, LabelsAndPaddingShrinkWithTheFace) {
    const TableLayout table = naturalTable(11, face(11));
    EXPECT_EQ(table.sidePadding, 5);
    EXPECT_EQ(table.labelWidth, 34);
    EXPECT_EQ(table.labelGap, 4);
}

TEST(SkyTable, WideLabelsKeepTheirRoom) {
    EXPECT_EQ(naturalTable(18, {21, 70, 150}).labelWidth, 70);
}

TEST(SkyTable, FlattenedFirstWithoutPaddingThenWithCloserRows) {
    const TableLayout natural = naturalTable(11, face(11));
    EXPECT_EQ(flattened(natural, natural.height()).height(), natural.height());
    const TableLayout bare = flattened(natural, natural.height() - 10);
    EXPECT_EQ(bare.edgePadding, 0);
    EXPECT_EQ(bare.pitch, natural.pitch);
    const TableLayout close = flattened(natural, natural.height() - 20);
    EXPECT_EQ(close.edgePadding, 0);
    EXPECT_EQ(close.pitch, natural.pitch - 1);
    EXPECT_EQ(flattened(natural, 10).pitch, 11) << "letters must not touch";
}

TEST(SkyPlotLayout, LargestFaceWhereThereIsRoom) {
    const SkyPlotLayout layout = arranged(700, 700);
    EXPECT_EQ(layout.table.pixels, 18);
    EXPECT_EQ(layout.diskSide, 700 - 12 - layout.table.width());
}

TEST(SkyPlotLayout, LowPaneShrinksTheFaceAndKeepsTheWholeHeightForTheDisk) {
    const SkyPlotLayout layout = arranged(404, 204);
    EXPECT_EQ(layout.diskSide, 204);
    EXPECT_LT(layout.table.pixels, 18);
    EXPECT_GT(layout.table.pixels, 11);
}

TEST(SkyPlotLayout, NarrowPaneShrinksTheFaceUntilTheDiskHasItsUsualSide) {
    const SkyPlotLayout layout = arranged(404, 400);
    EXPECT_GE(layout.diskSide, 200);
    EXPECT_LT(layout.table.pixels, 18);
    const TableLayout larger = naturalTable(layout.table.pixels + 1, face(layout.table.pixels + 1));
    EXPECT_LT(404 - 12 - larger.width(), 200) << "no larger face would have done";
}

TEST(SkyPlotLayout, NothingIsClippedInAnyPane) {
    const QSize least = leastSkyPlotSize(kLeastDisk, face);
    EXPECT_LE(least.width(), 320);
    EXPECT_LE(least.height(), 150);
    for (int width = least.width(); width <= 900; width += 7) {
        for (int height = least.height(); height <= 900; height += 7) {
            const SkyPlotLayout layout = arranged(width, height);
            EXPECT_GE(layout.diskSide, kLeastDisk);
            EXPECT_LE(layout.diskSide, height);
            EXPECT_LE(layout.diskSide + 12 + layout.table.width(), width);
            EXPECT_LE(layout.table.height(), height) << width << " x " << height;
            EXPECT_GE(layout.table.pixels, 11);
            EXPECT_LE(layout.table.rowTop(kRows - 1) + layout.table.lineHeight,
                      layout.table.height());
        }
    }
}

}  // namespace
}  // namespace veloran
