#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veloran {

/// The arguments of a process without its own name.
std::vector<std::string_view> argumentsOf(int argc, char** argv);

/// Those that Qt does not take for itself.
std::vector<std::string_view> withoutQtOptions(const std::vector<std::string_view>& arguments);

/// What the program says instead of opening its window.
struct CommandLineAnswer {
    std::string text;
    int exitCode = 0;  ///< 2 for arguments that it does not know
};
/// Absent when the window is wanted.
std::optional<CommandLineAnswer> answerTo(const std::vector<std::string_view>& arguments);

/// Gives the answer, on standard error if it is a refusal, and the exit code. Needs no display:
/// call it before there is an application.
std::optional<int> answeredWithoutWindow(int argc, char** argv);

}  // namespace veloran
