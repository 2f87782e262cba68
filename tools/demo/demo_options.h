#pragma once

#include <QSize>
#include <QString>
#include <optional>
#include <string>

namespace veloran {

/// What is to be seen in the end. From `browser` on it is a window or a sheet, while a pass is
/// tracked.
enum class DemoShow {
    nothing,
    pass,
    tracking,
    conflict,
    browser,
    details,
    list,
    importing,
    settings
};

/// What the radio server sends without end, as fast as it is taken, once a session runs.
enum class DemoFlood { none, lineFeeds, line, binary };

struct DemoOptions {
    std::optional<double> seconds;  ///< absent: until it is quit, as the program is
    QString screenshot;             ///< empty: none
    QString part;                   ///< object name of what the picture is of; empty: the window
    QString log;                    ///< of the radio; empty: none
    QSize size{1200, 800};
    std::optional<bool> dark;  ///< absent: as the desktop is
    double rateHz = 10;
    DemoShow show = DemoShow::tracking;
    std::string mapStyle;               ///< as stored; empty: the first
    std::size_t satellites = 0;         ///< to select, if more than the demo selects by itself
    bool search = false;                ///< search passes anew as soon as a search has ended
    std::optional<double> searchEvery;  ///< seconds of rest between searches
    DemoFlood flood = DemoFlood::none;
    bool resize = false;   ///< change the window's size all the time
    bool figures = false;  ///< measure, and say so in the report
};

/// Reads the command line, before there is an application: a bad one, and --help, end the program
/// with a text, which needs no display.
DemoOptions readDemoOptions(int argc, char** argv);

}  // namespace veloran
