#pragma once

#include <QApplication>
#include <QSize>
#include <QString>
#include <optional>

namespace veloran {

struct DemoOptions {
    std::optional<double> seconds;  ///< absent: until the window is closed
    QString screenshot;             ///< empty: none
    QString log;                    ///< of the radio; empty: none
    QSize size{1200, 800};
    std::optional<bool> dark;  ///< absent: as the desktop is
    double rateHz = 10;
};

/// Reads the command line. A bad one, and --help, end the program with a text.
DemoOptions readDemoOptions(const QApplication& application);

}  // namespace veloran
