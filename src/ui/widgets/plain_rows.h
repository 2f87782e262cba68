#pragma once

class QAbstractItemView;

namespace veloran {

/// Makes a view of rows that a delegate paints: no frame, no marking of its own, nothing to edit,
/// and no scrolling sideways.
void makePlainRows(QAbstractItemView& view);

}  // namespace veloran
