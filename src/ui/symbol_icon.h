#pragma once

#include <QIcon>

#include "ui/ink.h"

namespace veloran {

/// Our own line symbols. They take the theme's colours at the moment they are painted, so an icon
/// made once follows a change of theme.
enum class Symbol { arrowClockwise, arrowUpAndDown, play, stop };

QIcon symbolIcon(Symbol symbol, Ink ink = Ink::primary);

/// The mark of the program.
QIcon applicationIcon();

}  // namespace veloran
