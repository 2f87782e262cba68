#include "ui/widgets/plain_rows.h"

#include <QAbstractItemView>

namespace veloran {

void makePlainRows(QAbstractItemView& view) {
    view.setFrameShape(QFrame::NoFrame);
    view.setSelectionMode(QAbstractItemView::NoSelection);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

}  // namespace veloran
