#pragma once

#include <QPixmap>
#include <QString>

#include "core/app_state.h"
#include "demo/demo_options.h"
#include "demo/local_station.h"
#include "ui/main_window.h"

namespace veloran {

/// Opens what shall be seen over or beside the main window, if anything. The details are those of
/// the selected pass's satellite; the sheet for importing holds the station's text.
void openWindow(DemoShow show, MainWindow& window, AppState& state, const LocalStation& station);

/// Makes the window larger and smaller for ever, as a hand does that drags its corner.
void keepResizing(QWidget& window);

/// The browser if it is open, else the main window; over it the dialog that may be open, where it
/// stands. With a `part` that widget of the main window alone; null when there is none.
QPixmap picture(MainWindow& window, const QString& part);

}  // namespace veloran
