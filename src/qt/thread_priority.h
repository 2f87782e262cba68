#pragma once

namespace veloran {

// The niceness of single threads, which Linux alone has: elsewhere nothing is changed.

/// What a thread has that gives way to the calling one.
int lowerNiceness();
/// Of the calling thread. A refusal of the system leaves it as it was.
void setNiceness(int niceness);

}  // namespace veloran
