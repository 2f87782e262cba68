// A packed answer, as it comes in: a byte for the largest size allowed, one for the size of the
// pieces, the stream.

#include "qt/gunzip.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "checks.h"
#include "require.h"

namespace veloran::fuzz {

namespace {

constexpr std::size_t kEveryText = 16 * 1024 * 1024;  // more than 4096 bytes can unpack to

std::optional<std::string> unpacked(std::string_view packed, std::size_t largest,
                                    std::size_t piece) {
    Gunzip unpacking(largest);
    bool good = true;
    for (; !packed.empty(); packed.remove_prefix(std::min(piece, packed.size()))) {
        const bool taken = unpacking.feed(packed.substr(0, piece));
        require(good || !taken, "what is damaged stays damaged");
        good = taken;
    }
    auto text = unpacking.finish();
    require(good || !text, "what is damaged gives no text");
    require(!text || text->size() <= largest, "a text keeps its largest size");
    return text;
}

/// However it is cut, and with a limit that just fits or just does not.
void requireOneOutcome(std::string_view packed, std::size_t largest, std::size_t piece) {
    const auto whole = unpacked(packed, kEveryText, packed.size());
    require(unpacked(packed, kEveryText, piece) == whole, "pieces give the same as the whole");
    require(unpacked(packed, largest, piece) == unpacked(packed, largest, packed.size()),
            "pieces give the same below a limit");
    if (!whole) return;
    require(unpacked(packed, whole->size(), piece) == whole, "a limit that fits lets pass");
    if (whole->empty()) return;
    require(!unpacked(packed, whole->size() - 1, piece), "a limit that does not fit refuses");
}

/// One member.
std::string gzip(std::string_view text) {
    constexpr int kGzip = MAX_WBITS + 16;
    constexpr int kMemory = 8;
    z_stream stream{};
    require(deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kGzip, kMemory,
                         Z_DEFAULT_STRATEGY) == Z_OK,
            "zlib has memory");
    std::string packed(deflateBound(&stream, text.size()), '\0');
    // The interface of zlib is in unsigned bytes.
    stream.next_in = reinterpret_cast<const Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    require(deflate(&stream, Z_FINISH) == Z_STREAM_END, "zlib packs");
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

/// The bytes as a text to pack: one member, or two.
void requireThereAndBack(std::string_view text, std::size_t piece) {
    const auto half = text.size() / 2;
    for (const auto& packed : {gzip(text), gzip(text.substr(0, half)) + gzip(text.substr(half))}) {
        require(unpacked(packed, text.size(), piece) == text, "what was packed comes back");
    }
}

}  // namespace

void checkGunzip(std::string_view bytes) {
    const auto number = [&bytes] {
        const std::size_t value = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(std::min<std::size_t>(1, bytes.size()));
        return value;
    };
    const std::size_t largest = 64 * number();
    const std::size_t piece = 1 + number();
    requireOneOutcome(bytes, largest, piece);
    requireThereAndBack(bytes, piece);
}

}  // namespace veloran::fuzz
