#include "demo/demo_options.h"

#include <fmt/format.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdlib>

#include "app/command_line.h"
#include "base/text.h"

namespace veloran {
namespace {

[[noreturn]] void refuse(const QString& option, const QString& value) {
    fmt::print(stderr, "veloran-demo: --{} cannot be \"{}\"\n", option.toStdString(),
               value.toStdString());
    std::exit(2);
}

double number(const QCommandLineParser& parser, const QString& option, double low, double high) {
    const QString text = parser.value(option);
    const auto value = parseDouble(text.toStdString());
    if (!value || *value < low || *value > high) refuse(option, text);
    return *value;
}

DemoShow show(const QCommandLineParser& parser) {
    static const QStringList kNames{"nothing", "pass", "tracking", "conflict", "browser",
                                    "details", "list", "import",   "settings"};
    const QString text = parser.value("show");
    const int index = static_cast<int>(kNames.indexOf(text));
    if (index < 0) refuse("show", text);
    return static_cast<DemoShow>(index);
}

DemoFlood flood(const QCommandLineParser& parser) {
    static const QStringList kNames{"linefeeds", "line", "binary"};
    const QString text = parser.value("flood");
    const int index = static_cast<int>(kNames.indexOf(text));
    if (index < 0) refuse("flood", text);
    return static_cast<DemoFlood>(index + 1);
}

std::string mapStyle(const QCommandLineParser& parser) {
    const QString text = parser.value("map");
    if (!QStringList{"standard", "imagery", "hybrid"}.contains(text)) refuse("map", text);
    return text.toStdString();
}

QSize size(const QCommandLineParser& parser) {
    const QString text = parser.value("size");
    const QStringList sides = text.split('x');
    const int width = sides.value(0).toInt();
    const int height = sides.value(1).toInt();
    if (sides.size() != 2 || width < 1 || width > 8192 || height < 1 || height > 8192) {
        refuse("size", text);
    }
    return {width, height};
}

/// All but what is Qt's own.
QStringList ownArguments(int argc, char** argv) {
    QStringList own{QString::fromLocal8Bit(argv[0])};
    for (const auto argument : withoutQtOptions(argumentsOf(argc, argv))) {
        own += QString::fromLocal8Bit(argument);
    }
    return own;
}

/// As QCommandLineParser::process, with 2 for what is not known.
void parse(QCommandLineParser& parser, int argc, char** argv) {
    const bool isKnown = parser.parse(ownArguments(argc, argv));
    if (isKnown && parser.isSet("help")) {
        const QCoreApplication named(argc, argv);  // the text begins with the program's name
        parser.showHelp();
    }
    const QStringList rest = parser.positionalArguments();
    if (isKnown && rest.isEmpty()) return;
    const QString trouble =
        isKnown ? QString("\"%1\" is not known.").arg(rest.front()) : parser.errorText();
    fmt::print(stderr, "veloran-demo: {}\n", trouble.toStdString());
    std::exit(2);
}

}  // namespace

DemoOptions readDemoOptions(int argc, char** argv) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Veloran at work: sample satellites from a local server, a simulated radio, and the pass "
        "under way or the next one, tracked. Everything in a throw-away home.");
    parser.addHelpOption();
    parser.addOptions({
        {"seconds", "End after this long, without a question; without it, as the program does.",
         "N"},
        {"screenshot", "Write a picture of the window at the end.", "FILE"},
        {"part", "Take a picture of this widget of the main window alone.", "OBJECT_NAME"},
        {"log", "Write what the radio sends and receives; the latest 32 MB stay.", "FILE"},
        {"size", "Size of the window.", "WxH", "1200x800"},
        {"dark", "Dark colours."},
        {"light", "Light colours."},
        {"rate", "Updates of the radio a second, 1 to 50.", "HZ", "10"},
        {"show",
         "nothing, pass (selected), tracking, conflict (its question is open), or what is opened "
         "while a pass is tracked: browser, details, list, import, settings.",
         "WHAT", "tracking"},
        {"map", "Style of the map: standard, imagery or hybrid.", "STYLE", "standard"},
        {"satellites", "Select so many, with made-up ones if need be; 0 to 20000.", "N", "0"},
        {"search", "Search the passes anew as soon as a search has ended."},
        {"search-every", "Search the passes anew so long after a search has ended.", "SECONDS"},
        {"flood", "Let the radio server send linefeeds, a line without end, or binary, for ever.",
         "WHAT"},
        {"resize", "Change the size of the window all the time."},
        {"figures",
         "Measure ticks, frames and processor from the first tick on, the first window and "
         "memory."},
    });
    parse(parser, argc, argv);

    DemoOptions options;
    if (parser.isSet("seconds")) options.seconds = number(parser, "seconds", 0, 1e6);
    options.screenshot = parser.value("screenshot");
    options.part = parser.value("part");
    options.log = parser.value("log");
    options.size = size(parser);
    if (parser.isSet("dark") || parser.isSet("light")) options.dark = parser.isSet("dark");
    options.show = show(parser);
    options.mapStyle = mapStyle(parser);
    options.satellites = static_cast<std::size_t>(number(parser, "satellites", 0, 20000));
    options.search = parser.isSet("search") || parser.isSet("search-every");
    if (parser.isSet("search-every")) options.searchEvery = number(parser, "search-every", 0, 1e6);
    if (parser.isSet("flood")) options.flood = flood(parser);
    options.resize = parser.isSet("resize");
    options.figures = parser.isSet("figures");
    options.rateHz = number(parser, "rate", 1, 50);
    return options;
}

}  // namespace veloran
