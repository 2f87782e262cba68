#pragma once

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QRectF>

#include "ui/ink.h"

namespace veloran {

/// Our own line symbols. They take the theme's colours at the moment they are painted, so an icon
/// made once follows a change of theme.
enum class Symbol {
    arrowClockwise,
    arrowUpAndDown,
    play,
    stop,
    grid,
    satellite,
    gear,
    chevronDown,
    chevronRight,
    chevronDownDisc,
    chevronRightDisc,
    location,
    zoomIn,
    zoomOut,
    plusSquare,
    crossDisc,
    checkDisc,
    arrowUpRight,
    arrowLeftAndRight,
    arrowUp,
    arrowDown,
    antenna,
    pin,
    search,
    importTray,
    info,
    trash
};

/// Paints a symbol in any colour.
void paintSymbol(QPainter& painter, const QRectF& rect, Symbol symbol, const QColor& color);

QIcon symbolIcon(Symbol symbol, Ink ink = Ink::primary);

/// The mark of the program.
QIcon applicationIcon();

}  // namespace veloran
