#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veloran {

/// Bytes without a limit of their number, in blocks: to grow moves none of them, to take over those
/// of another text copies none, and they can be let go of little by little. Takes at most twice the
/// memory of the bytes, and 256 more.
class BlockText {
  public:
    /// The size of a block, but for the first ones, which are smaller.
    static constexpr std::size_t kBlock = 64 * 1024;
    /// A text of that length is taken over, a shorter one copied: what is left over in the last
    /// block of each then stays below half.
    static constexpr std::size_t kLong = 2 * kBlock;

    void append(std::string_view bytes);
    void append(BlockText other);
    /// Leaves the bytes from `begin` up to `end`. Keeps the memory of the others.
    void cut(std::size_t begin, std::size_t end);

    std::size_t size() const { return size_; }
    bool startsWith(std::string_view bytes) const;
    std::string text() const;

    /// Takes no memory.
    bool isReleased() const { return blocks_.empty(); }
    /// Lets go of about so many bytes of memory, or of all that is left, and of what stood there.
    void release(std::size_t bytes);

  private:
    struct Block {
        std::unique_ptr<char[]> bytes;
        std::uint32_t capacity = 0;
        std::uint32_t begin = 0;  // of what counts
        std::uint32_t end = 0;
        std::string_view text() const { return {bytes.get() + begin, end - begin}; }
    };

    std::vector<Block> blocks_;
    std::size_t size_ = 0;
};

}  // namespace veloran
