#include "counted_memory.h"

#include <malloc.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>
#include <utility>

namespace veloran::test {

std::int64_t liveBytes = 0;
std::int64_t peakBytes = 0;
std::int64_t givenBytes = 0;

namespace {

struct Mapped {
    void* at = nullptr;
    std::size_t size = 0;
    bool isLocked = false;
};

bool isLocking = false;
std::array<Mapped, 4096> mapped;  // oldest first
std::size_t mappedCount = 0;

void noteGiven(std::size_t size) {
    liveBytes += static_cast<std::int64_t>(size);
    givenBytes += static_cast<std::int64_t>(size);
    peakBytes = std::max(peakBytes, liveBytes);
}

void* map(std::size_t size) {
    void* at = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (at == MAP_FAILED || mappedCount == mapped.size()) std::abort();
    mapped[mappedCount++] = {at, size, false};
    noteGiven(size);
    return at;
}

bool unmap(void* block) {
    auto* const end = mapped.begin() + mappedCount;
    auto* const found = std::find_if(mapped.begin(), end,
                                     [block](const Mapped& entry) { return entry.at == block; });
    if (found == end) return false;
    ::munmap(block, found->size);
    liveBytes -= static_cast<std::int64_t>(found->size);
    std::move(found + 1, end, found);
    --mappedCount;
    return true;
}

}  // namespace

LockedBlocks::LockedBlocks() {
    isLocking = true;
}

LockedBlocks::~LockedBlocks() {
    isLocking = false;
}

void LockedBlocks::lockOld() {
    for (std::size_t i = 0; i + kNewest < mappedCount; ++i) {
        if (std::exchange(mapped[i].isLocked, true)) continue;
        if (::mprotect(mapped[i].at, mapped[i].size, PROT_NONE) != 0) std::abort();
    }
}

std::size_t LockedBlocks::count() const {
    return mappedCount;
}

}  // namespace veloran::test

void* operator new(std::size_t size) {
    using namespace veloran::test;
    if (isLocking && size >= LockedBlocks::kLarge) return map(size);
    void* block = std::malloc(size > 0 ? size : 1);
    if (!block) std::abort();
    noteGiven(malloc_usable_size(block));
    return block;
}
void operator delete(void* block) noexcept {
    using namespace veloran::test;
    if (!block || (mappedCount > 0 && unmap(block))) return;
    liveBytes -= static_cast<std::int64_t>(malloc_usable_size(block));
    std::free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}
// Those of arrays too, as a sanitizer brings its own that do not come by here.
void* operator new[](std::size_t size) {
    return operator new(size);
}
void operator delete[](void* block) noexcept {
    operator delete(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}
