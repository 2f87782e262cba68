#pragma once

#include <string>

namespace veloran {

// What the system knows of this process.

/// Of all threads so far.
double processorSeconds();
/// Of all threads but the one that asks.
double workerSeconds();
/// Since the process was started; the system keeps its start in hundredths of a second.
double secondsSinceStart();
/// "RSS 96.1 MB, PSS 71.4 MB": resident, and with shared pages counted by their share.
std::string memoryText();

}  // namespace veloran
