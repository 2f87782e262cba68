#pragma once

#include <cstddef>
#include <cstdint>

namespace veloran::test {

// Every allocation of the process by operator new, as malloc really gave it.

extern std::int64_t liveBytes;
extern std::int64_t peakBytes;
extern std::int64_t givenBytes;  ///< in all, whether they live or not

/// While it lives, large blocks stand on pages of their own, and all but the newest can be put out
/// of reach: who reads or writes there again ends the test.
class LockedBlocks {
  public:
    static constexpr std::size_t kLarge = 64 * 1024;
    static constexpr std::size_t kNewest = 5;

    LockedBlocks();
    ~LockedBlocks();
    LockedBlocks(const LockedBlocks&) = delete;
    LockedBlocks& operator=(const LockedBlocks&) = delete;

    void lockOld();
    std::size_t count() const;
};

}  // namespace veloran::test
