#include "qt/thread_priority.h"

#ifdef __linux__
#include <sys/resource.h>
#endif

namespace veloran {

#ifdef __linux__

namespace {
constexpr id_t kCallingThread = 0;
constexpr int kStep = 10;  // a tenth of the share of a busy core
}  // namespace

int lowerNiceness() {
    return getpriority(PRIO_PROCESS, kCallingThread) + kStep;
}

/// The kernel takes more than the highest niceness as that.
void setNiceness(int niceness) {
    setpriority(PRIO_PROCESS, kCallingThread, niceness);
}

#else

int lowerNiceness() {
    return 0;
}
void setNiceness(int) {}

#endif

}  // namespace veloran
