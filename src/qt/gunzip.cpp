#include "qt/gunzip.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace veloran {

struct Gunzip::State {
    explicit State(std::size_t largestText) : largest(largestText) {
        constexpr int kGzipOnly = MAX_WBITS + 16;
        isGood = inflateInit2(&stream, kGzipOnly) == Z_OK;
    }
    ~State() { inflateEnd(&stream); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    bool unpack();

    z_stream stream{};
    std::size_t largest;
    std::string text;
    bool isGood;
    bool atMemberEnd = false;
};

/// Takes all of the stream's input.
bool Gunzip::State::unpack() {
    std::array<Bytef, 64 * 1024> piece{};
    while (true) {
        if (stream.avail_in > 0 && atMemberEnd) {  // another member follows
            if (inflateReset(&stream) != Z_OK) return false;
            atMemberEnd = false;
        }
        stream.next_out = piece.data();
        stream.avail_out = static_cast<uInt>(piece.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result == Z_BUF_ERROR) return true;  // nothing left to take or to give
        if (result != Z_OK && result != Z_STREAM_END) return false;
        text.append(piece.begin(), piece.end() - stream.avail_out);
        if (text.size() > largest) return false;
        atMemberEnd = result == Z_STREAM_END;
        if (atMemberEnd && stream.avail_in == 0) return true;
    }
}

Gunzip::Gunzip(std::size_t largest) : state_(std::make_unique<State>(largest)) {}
Gunzip::~Gunzip() = default;
Gunzip::Gunzip(Gunzip&&) noexcept = default;
Gunzip& Gunzip::operator=(Gunzip&&) noexcept = default;

bool Gunzip::feed(std::string_view packed) {
    auto& state = *state_;
    while (state.isGood && !packed.empty()) {
        const auto part = packed.substr(0, std::numeric_limits<uInt>::max());
        // The interface of zlib is in unsigned bytes.
        state.stream.next_in = reinterpret_cast<const Bytef*>(part.data());
        state.stream.avail_in = static_cast<uInt>(part.size());
        state.isGood = state.unpack();
        packed.remove_prefix(part.size());
    }
    return state.isGood;
}

std::optional<std::string> Gunzip::finish() {
    if (!state_->isGood || !state_->atMemberEnd) return std::nullopt;
    return std::exchange(state_->text, {});
}

}  // namespace veloran
