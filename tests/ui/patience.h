#pragma once

namespace veloran::test {

/// What a test waits for an event at most, in milliseconds: only a failure takes as long, however
/// busy the machine is.
constexpr int kPatienceMs = 60'000;

}  // namespace veloran::test
