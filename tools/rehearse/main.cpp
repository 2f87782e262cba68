// Tells what an unattended time would bring: the passes that the queue would track.

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/text.h"
#include "elements/tle_manager.h"
#include "rehearse/rehearsal.h"
#include "rehearse/rehearsal_options.h"

namespace {

using namespace veloran;

constexpr int kFailed = 1;
constexpr int kMisused = 2;

int fail(const std::string& reason, int code = kFailed) {
    fmt::print(stderr, "veloran-rehearse: {}\n", reason);
    return code;
}

/// Absent with `errno` set when the file cannot be read.
std::optional<std::string> contentOf(const std::string& file) {
    const auto close = [](std::FILE* stream) { std::fclose(stream); };
    const std::unique_ptr<std::FILE, decltype(close)> opened(
        file == "-" ? nullptr : std::fopen(file.c_str(), "rb"), close);
    std::FILE* const stream = file == "-" ? stdin : opened.get();
    if (!stream) return std::nullopt;
    std::string content;
    std::array<char, 65536> piece{};
    while (const auto count = std::fread(piece.data(), 1, piece.size(), stream)) {
        content.append(piece.data(), count);
    }
    return std::ferror(stream) == 0 ? std::optional(std::move(content)) : std::nullopt;
}

/// 0 when all that was printed has got out.
int finish() {
    const bool isOut = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return isOut ? 0 : fail("the output cannot be written");
}

/// Prints events as they come, and counts them.
class Printer {
  public:
    void operator()(const RehearsalEvent& event) {
        std::fputs((eventLine(event) + '\n').c_str(), stdout);
        ++counts_.at(static_cast<std::size_t>(event.kind));
    }
    std::string summary(std::size_t satellites) const {
        return fmt::format(
            "{} satellites: {} passes queued, {} kept out by a conflict, {} started, {} ended, "
            "{} skipped",
            satellites, counts_[0], counts_[1], counts_[2], counts_[3], counts_[4]);
    }

  private:
    std::array<std::size_t, 5> counts_{};
};

int rehearse(const RehearsalOptions& options) {
    const auto elements = contentOf(options.file);
    if (!elements) return fail(fmt::format("{}: {}", options.file, std::strerror(errno)));
    if (!isValidUtf8(*elements)) return fail(fmt::format("{}: not UTF-8", options.file));
    if (TLEManager::parseAuto(*elements).empty()) {
        return fail(fmt::format("{}: no element sets in it", options.file));
    }
    RehearsalPlan plan{.elements = *elements,
                       .latitude = options.latitude,
                       .longitude = options.longitude,
                       .altitude = options.altitude,
                       .start = options.start,
                       .refreshHours = options.refreshHours};
    if (options.minElevation) plan.minElevation = *options.minElevation;
    Printer printer;
    Rehearsal rehearsal(plan, std::ref(printer));
    rehearsal.advance(options.seconds);
    const int result = finish();
    if (result == 0) fmt::print(stderr, "{}\n", printer.summary(rehearsal.satelliteCount()));
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    const auto options = readRehearsalOptions(arguments);
    if (const auto* help = std::get_if<RehearsalHelp>(&options)) {
        const bool asksUsage = *help == RehearsalHelp::usage;
        const std::string_view version = "veloran-rehearse " VELORAN_VERSION "\n";
        const auto text = asksUsage ? kRehearsalUsage : version;
        std::fwrite(text.data(), 1, text.size(), stdout);
        return finish();
    }
    if (const auto* refusal = std::get_if<RehearsalRefusal>(&options)) {
        return fail(refusal->reason + "\nTry 'veloran-rehearse --help'.", kMisused);
    }
    return rehearse(std::get<RehearsalOptions>(options));
}
