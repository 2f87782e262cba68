#include "qt/gunzip.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>

namespace veloran {

namespace {

class Inflater {
  public:
    Inflater() {
        constexpr int kGzipOnly = MAX_WBITS + 16;
        ready_ = inflateInit2(&stream_, kGzipOnly) == Z_OK;
    }
    ~Inflater() { inflateEnd(&stream_); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    bool isReady() const { return ready_; }
    z_stream& stream() { return stream_; }

  private:
    z_stream stream_{};
    bool ready_ = false;
};

}  // namespace

std::optional<std::string> gunzipped(std::string_view packed, std::size_t largest) {
    if (packed.size() > std::numeric_limits<uInt>::max()) return std::nullopt;
    Inflater inflater;
    if (!inflater.isReady()) return std::nullopt;
    auto& stream = inflater.stream();
    std::array<Bytef, 64 * 1024> piece{};
    std::string unpacked;
    // The interface of zlib is in unsigned bytes.
    stream.next_in = reinterpret_cast<const Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    while (true) {
        stream.next_out = piece.data();
        stream.avail_out = static_cast<uInt>(piece.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END) return std::nullopt;
        unpacked.append(piece.begin(), piece.end() - stream.avail_out);
        if (unpacked.size() > largest) return std::nullopt;
        if (result == Z_STREAM_END) {
            if (stream.avail_in == 0) return unpacked;
            if (inflateReset(&stream) != Z_OK) return std::nullopt;
        }
    }
}

}  // namespace veloran
