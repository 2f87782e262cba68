#include "support/running_case.h"

#include <fmt/format.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace veloran::test {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr unsigned kSlowness = 10;
#else
constexpr unsigned kSlowness = 1;
#endif

void endLongCase(int) {
    constexpr std::string_view kReason = "veloran: the case above takes too long\n";
    if (write(STDERR_FILENO, kReason.data(), kReason.size()) < 0) _exit(1);
    std::abort();
}

}  // namespace

RunningCase::RunningCase(const std::string& name, unsigned seconds)
    : trace_(__FILE__, __LINE__, name) {
    fmt::print(stderr, "{}\n", name);
    std::signal(SIGALRM, endLongCase);
    alarm(seconds * kSlowness);
}

RunningCase::~RunningCase() {
    alarm(0);
    std::signal(SIGALRM, SIG_DFL);
}

}  // namespace veloran::test
