#include "ui/sky_plot/sky_plot_layout.h"

#include <algorithm>
#include <cmath>

#include "ui/sky_plot/look_angle_rows.h"

namespace veloran {

namespace {

constexpr int kRows = static_cast<int>(kTableRows);
constexpr int kRowsAboveDivider = static_cast<int>(kPassRows);
constexpr int kRowSpacing = 1;
constexpr int kDividerHeight = 1;
constexpr int kDividerPadding = 2;  // above and below it

int scaled(int size, int pixels) {
    return static_cast<int>(std::lround(size * pixels / double{TableLayout::kLargestPixels}));
}

}  // namespace

int TableLayout::height() const {
    return 2 * edgePadding + (kRows - 1) * pitch + lineHeight + dividerRoom;
}

int TableLayout::rowTop(int row) const {
    return edgePadding + row * pitch + (row >= kRowsAboveDivider ? dividerRoom : 0);
}

int TableLayout::dividerTop() const {
    const int gap = rowTop(kRowsAboveDivider) - rowTop(kRowsAboveDivider - 1) - lineHeight;
    return rowTop(kRowsAboveDivider - 1) + lineHeight + (gap - kDividerHeight) / 2;
}

TableLayout naturalTable(int pixels, const FaceMetrics& face) {
    TableLayout table;
    table.pixels = pixels;
    table.sidePadding = table.edgePadding = scaled(8, pixels);
    table.labelWidth = std::max(scaled(56, pixels), face.labelWidth);
    table.labelGap = scaled(6, pixels);
    table.valueWidth = face.valueWidth;
    table.lineHeight = face.lineHeight;
    table.pitch = face.lineHeight + kRowSpacing;
    table.dividerRoom = kDividerHeight + 2 * kDividerPadding + kRowSpacing;
    return table;
}

TableLayout flattened(TableLayout table, int height) {
    const int tooMuch = table.height() - height;
    if (tooMuch <= 0) return table;
    table.edgePadding -= std::min(table.edgePadding, (tooMuch + 1) / 2);
    while (table.height() > height && table.pitch > table.pixels) --table.pitch;
    return table;
}

SkyPlotLayout arrangeSkyPlot(QSize pane, int leastDisk, const MeasureFace& measure) {
    const int disk = std::min(SkyPlotLayout::kUsualDisk, pane.height());
    const auto besideTable = [&](const TableLayout& table) {
        return pane.width() - SkyPlotLayout::kSpacing - table.width();
    };
    SkyPlotLayout layout;
    for (int pixels = TableLayout::kLargestPixels; pixels >= TableLayout::kSmallestPixels;
         --pixels) {
        layout.table = naturalTable(pixels, measure(pixels));
        if (layout.table.height() <= pane.height() && besideTable(layout.table) >= disk) break;
    }
    layout.table = flattened(layout.table, pane.height());
    layout.diskSide = std::max(leastDisk, std::min(pane.height(), besideTable(layout.table)));
    return layout;
}

QSize leastSkyPlotSize(int leastDisk, const MeasureFace& measure) {
    constexpr int kSmallest = TableLayout::kSmallestPixels;
    const TableLayout table = flattened(naturalTable(kSmallest, measure(kSmallest)), leastDisk);
    return {leastDisk + SkyPlotLayout::kSpacing + table.width(),
            std::max(leastDisk, table.height())};
}

}  // namespace veloran
