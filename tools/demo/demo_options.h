#pragma once

#include <QApplication>
#include <QSize>
#include <QString>
#include <optional>
#include <string>

namespace veloran {

/// What the window shows in the end.
enum class DemoShow { nothing, pass, tracking, conflict };

struct DemoOptions {
    std::optional<double> seconds;  ///< absent: until the window is closed
    QString screenshot;             ///< empty: none
    QString log;                    ///< of the radio; empty: none
    QSize size{1200, 800};
    std::optional<bool> dark;  ///< absent: as the desktop is
    double rateHz = 10;
    DemoShow show = DemoShow::tracking;
    std::string mapStyle;  ///< as stored; empty: the first
    bool figures = false;  ///< measure, and say so in the report
};

/// Reads the command line. A bad one, and --help, end the program with a text.
DemoOptions readDemoOptions(const QApplication& application);

}  // namespace veloran
