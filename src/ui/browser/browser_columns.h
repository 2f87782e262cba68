#pragma once

#include <QFont>
#include <QRect>

#include "ui/browser/browser_rows.h"

namespace veloran {

// Where the pieces of the browser's rows lie, and which of them answer the pointer.

/// What a click, a key or an entry of the menu of a row can mean.
enum class RowPart { nothing, title, all, none, clear, subscription, checkBox, details, remove };

QFont sectionLabelFont();
QFont sectionButtonFont();
QFont sectionCountFont();
/// All rows have one height, so that the place of any of thousands is known without asking it.
int browserRowHeight();

/// The heading; what it does not show is empty. A label that finds no room is cut.
struct SectionColumns {
    QRect background;
    QRect chevron, label, count, selected;
    QRect all, firstBar, none, secondBar, clear, subscription;
    /// Buttons answer in the whole height of the row and a little to either side.
    RowPart partAt(const QPoint& at) const;
};
SectionColumns sectionColumns(const QRect& row, const SectionLook& look);

struct SatelliteColumns {
    QRect background;
    QRect checkBox, dot, name, number, age, channels, frequency, details;
    RowPart partAt(const QPoint& at) const;
};
SatelliteColumns satelliteColumns(const QRect& row);

}  // namespace veloran
