#include "demo/process_figures.h"

#include <fmt/format.h>
#include <sys/resource.h>
#include <unistd.h>

#include <ctime>
#include <fstream>
#include <iterator>
#include <sstream>

#include "base/text.h"

namespace veloran {
namespace {

std::string contentOf(const char* file) {
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The word at `index` as a number; 0 when it is none.
double word(const std::string& text, int index) {
    std::istringstream words(text);
    std::string found;
    for (int i = 0; i <= index; ++i) words >> found;
    return parseDouble(found).value_or(0);
}

/// MB of the line "Rss:   98324 kB" of /proc/self/smaps_rollup.
double megabytes(const std::string& lines, const std::string& name) {
    const auto at = lines.find("\n" + name + ":");
    if (at == std::string::npos) return 0;
    return word(lines.substr(at + name.size() + 2), 0) / 1024;
}

/// User and system time.
double usedBy(int whom) {
    rusage usage{};
    getrusage(whom, &usage);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace

double processorSeconds() {
    return usedBy(RUSAGE_SELF);
}

double workerSeconds() {
    return usedBy(RUSAGE_SELF) - usedBy(RUSAGE_THREAD);
}

double secondsSinceStart() {
    const std::string stat = contentOf("/proc/self/stat");
    // The 22nd field; the second, the name, ends with the last ")".
    const double ticks = word(stat.substr(stat.rfind(')') + 1), 22 - 3);
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9 -
           ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

std::string memoryText() {
    const std::string lines = contentOf("/proc/self/smaps_rollup");
    return fmt::format("RSS {:.1f} MB, PSS {:.1f} MB", megabytes(lines, "Rss"),
                       megabytes(lines, "Pss"));
}

}  // namespace veloran
