#include "app/command_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace veloran {

namespace {

constexpr std::string_view kHelp =
    "Usage: veloran [options]\n"
    "Tracks satellites and steers a radio through their passes.\n"
    "\n"
    "  -h, --help     Show this text.\n"
    "  -v, --version  Show the version.\n"
    "\n"
    "The options that Qt gives every program are taken, too: -platform NAME, -style NAME.\n";

// With a value in the next argument; QGuiApplication, QApplication and the X11 plugin name them.
constexpr std::array<std::string_view, 14> kQtWithValue{"platform",        "platformpluginpath",
                                                        "platformtheme",   "plugin",
                                                        "qwindowgeometry", "qwindowtitle",
                                                        "qwindowicon",     "geometry",
                                                        "title",           "icon",
                                                        "session",         "display",
                                                        "style",           "stylesheet"};
constexpr std::array<std::string_view, 2> kQtAlone{"reverse", "widgetcount"};
constexpr std::array<std::string_view, 3> kQtWithEqualsSign{
    "style=", "stylesheet=", "qmljsdebugger="};

template <class Names>
bool isOneOf(const Names& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

/// Qt takes its options with one dash or two.
std::string_view qtName(std::string_view argument) {
    if (!argument.starts_with('-')) return {};
    argument.remove_prefix(argument.starts_with("--") ? 2 : 1);
    return argument;
}

}  // namespace

std::vector<std::string_view> argumentsOf(int argc, char** argv) {
    return {argv + std::min(argc, 1), argv + argc};
}

std::vector<std::string_view> withoutQtOptions(const std::vector<std::string_view>& arguments) {
    std::vector<std::string_view> rest;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view name = qtName(arguments[i]);
        const bool isWhole = std::ranges::any_of(
            kQtWithEqualsSign, [name](std::string_view form) { return name.starts_with(form); });
        if (isWhole || isOneOf(kQtAlone, name)) continue;
        if (isOneOf(kQtWithValue, name)) {
            ++i;
        } else {
            rest.push_back(arguments[i]);
        }
    }
    return rest;
}

std::optional<CommandLineAnswer> answerTo(const std::vector<std::string_view>& arguments) {
    for (const std::string_view argument : withoutQtOptions(arguments)) {
        if (argument == "-h" || argument == "--help") return CommandLineAnswer{std::string(kHelp)};
        if (argument == "-v" || argument == "--version") {
            return CommandLineAnswer{"veloran " VELORAN_VERSION "\n"};
        }
        return CommandLineAnswer{
            fmt::format("veloran: \"{}\" is not known; veloran --help tells what is\n", argument),
            2};
    }
    return std::nullopt;
}

std::optional<int> answeredWithoutWindow(int argc, char** argv) {
    const auto answer = answerTo(argumentsOf(argc, argv));
    if (!answer) return std::nullopt;
    std::fputs(answer->text.c_str(), answer->exitCode == 0 ? stdout : stderr);
    return answer->exitCode;
}

}  // namespace veloran
