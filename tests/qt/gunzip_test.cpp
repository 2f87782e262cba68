#include "qt/gunzip.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "qt/gzip.h"

namespace veloran {
namespace {

using test::gzip;
using ::testing::Optional;

/// Unpacks a text that comes in pieces of one size.
std::optional<std::string> gunzipped(std::string_view packed, std::size_t largest,
                                     std::size_t piece = std::string::npos) {
    Gunzip unpacking(largest);
    for (std::size_t at = 0; at < packed.size(); at += std::min(piece, packed.size())) {
        unpacking.feed(packed.substr(at, piece));
    }
    return unpacking.finish();
}

TEST(Gunzip, OneMemberOrSeveralComeBackAsOneText) {
    const std::string longText(300'000, 'x');
    EXPECT_THAT(gunzipped(gzip(""), 100), Optional(std::string()));
    EXPECT_THAT(gunzipped(gzip("hello"), 100), Optional(std::string("hello")));
    EXPECT_THAT(gunzipped(gzip("hello ") + gzip("world"), 100),
                Optional(std::string("hello world")));
    EXPECT_THAT(gunzipped(gzip(longText), longText.size()), Optional(longText));
}

TEST(Gunzip, PiecesOfAnySizeComeTogether) {
    const std::string text = "some text " + std::string(200'000, 'y');
    const auto packed = gzip(text) + gzip("end");
    for (const std::size_t piece : {1, 2, 3, 7, 64, 1000}) {
        EXPECT_THAT(gunzipped(packed, 1'000'000, piece), Optional(text + "end")) << piece;
    }
}

TEST(Gunzip, WhateverIsCutOffIsNotWhole) {
    const auto packed = gzip("a text of some length, a text of some length");
    for (std::size_t size = 0; size < packed.size(); ++size) {
        EXPECT_EQ(gunzipped(packed.substr(0, size), 1000), std::nullopt) << size << " bytes";
    }
}

TEST(Gunzip, DamageIsNoticed) {
    auto packed = gzip("hello");
    EXPECT_EQ(gunzipped(packed + "x", 100), std::nullopt);
    packed[packed.size() - 6] ^= 1;  // in the checksum
    EXPECT_EQ(gunzipped(packed, 100), std::nullopt);
    EXPECT_EQ(gunzipped("plain text", 100), std::nullopt);
}

TEST(Gunzip, ATextBeyondTheLimitIsRefused) {
    EXPECT_EQ(gunzipped(gzip(std::string(101, 'x')), 100), std::nullopt);
}

}  // namespace
}  // namespace veloran
