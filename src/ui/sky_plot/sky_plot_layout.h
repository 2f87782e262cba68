#pragma once

#include <QSize>
#include <functional>

namespace veloran {

// How the disk and the table share a pane. Logical pixels.

/// What a size of the mono face measures.
struct FaceMetrics {
    int lineHeight = 0;
    int labelWidth = 0;  ///< of the widest label
    int valueWidth = 0;  ///< of the widest value
};
using MeasureFace = std::function<FaceMetrics(int pixels)>;

/// The table at one size of its face: told for 18, shrunk evenly below.
struct TableLayout {
    static constexpr int kLargestPixels = 18;
    static constexpr int kSmallestPixels = 11;

    int pixels = kLargestPixels;
    int sidePadding = 8;  ///< left and right
    int edgePadding = 8;  ///< above and below
    int labelWidth = 56;
    int labelGap = 6;  ///< between a label and its value
    int valueWidth = 0;
    int lineHeight = 0;   ///< of one row
    int pitch = 0;        ///< from one row to the next
    int dividerRoom = 0;  ///< what the divider takes from the row above it to the one below

    int width() const { return 2 * sidePadding + labelWidth + labelGap + valueWidth; }
    int height() const;
    int valueLeft() const { return sidePadding + labelWidth + labelGap; }
    int rowTop(int row) const;
    int dividerTop() const;
};

/// The table at its natural size with this face.
TableLayout naturalTable(int pixels, const FaceMetrics& face);
/// The same table in less height: without padding first, then with the rows moved together, down to
/// a line of `pixels`, in which letters do not touch yet.
TableLayout flattened(TableLayout table, int height);

/// The disk in the left upper corner, the table beside it.
struct SkyPlotLayout {
    static constexpr int kSpacing = 12;
    static constexpr int kUsualDisk = 200;  ///< the table shrinks before the disk does

    int diskSide = 0;
    TableLayout table;
};

/// The table has the largest face with which it fits the height and leaves the disk its usual side,
/// or all of the height where that is less; the disk is the greatest square beside it, `leastDisk`
/// at least.
SkyPlotLayout arrangeSkyPlot(QSize pane, int leastDisk, const MeasureFace& measure);

/// The least pane that holds it all.
QSize leastSkyPlotSize(int leastDisk, const MeasureFace& measure);

}  // namespace veloran
