// Writes one group of the sample satellites as the element service would send it.
// Usage: veloran-sample-catalogue GROUP [YYYY-MM-DD]

#include <fmt/format.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "base/calendar.h"
#include "base/text.h"
#include "sample_catalogue/sample_catalogue.h"

namespace {

std::optional<veloran::Instant> readDay(std::string_view text) {
    const auto pieces = veloran::split(text, '-');
    if (pieces.size() != 3) return {};
    const auto year = veloran::parseInt64(pieces[0]);
    const auto month = veloran::parseInt64(pieces[1]);
    const auto day = veloran::parseInt64(pieces[2]);
    if (!year || !month || !day) return {};
    // Years that two digits of an element set can tell.
    if (*year < 1957 || *year > 2056 || *month < 1 || *month > 12 || *day < 1 || *day > 31) {
        return {};
    }
    return veloran::instantFromDate(*year, *month, *day);
}

veloran::Instant today() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return veloran::startOfDay(
        veloran::Instant::fromUnixSeconds(std::chrono::duration<double>(now).count()));
}

}  // namespace

int main(int argc, char** argv) {
    const auto day = argc > 2 ? readDay(argv[2]) : std::optional(today());
    if (argc < 2 || argc > 3 || !day) {
        fmt::print(stderr, "usage: veloran-sample-catalogue GROUP [YYYY-MM-DD]\n");
        return 2;
    }
    std::ifstream file(VELORAN_SAMPLE_SATELLITES, std::ios::binary);
    const std::string csv{std::istreambuf_iterator<char>(file), {}};
    const auto satellites = veloran::readSampleCatalogue(csv);
    if (!file || !satellites) {
        fmt::print(stderr, "{} does not read\n", VELORAN_SAMPLE_SATELLITES);
        return 1;
    }
    fmt::print("{}\n", veloran::ommArray(*satellites, argv[1], *day));
    return 0;
}
