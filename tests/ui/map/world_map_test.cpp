#include "ui/map/world_map.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <cmath>

namespace veloran::test {
namespace {

QByteArray worldFile() {
    QFile file(":/veloran/world_map.bin");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// One level, one ring (10 E 20 N, 11 E 20 N, 11 E 21 N) and one border.
QByteArray smallFile() {
    return QByteArray::fromHex(
        "56574d31"
        "01"
        "05"
        "01"
        "03"
        "d00f"
        "a01f"
        "c801"
        "00"
        "00"
        "c801"
        "01"
        "02"
        "00"
        "00"
        "01"
        "02");
}

bool isLand(const WorldLevel& level, GeoPoint at) {
    bool isInside = false;
    for (const WorldLine& ring : level.land) {
        for (std::size_t i = 0; i < ring.points.size(); ++i) {
            const GeoPoint a = ring.points[i];
            const GeoPoint b = ring.points[(i + 1) % ring.points.size()];
            if (std::abs(a.lon - b.lon) > 180 || (a.lon > at.lon) == (b.lon > at.lon)) continue;
            const double lat = a.lat + (at.lon - a.lon) / (b.lon - a.lon) * (b.lat - a.lat);
            if (lat > at.lat) isInside = !isInside;
        }
    }
    return isInside;
}

TEST(WorldMap, EveryLevelKnowsLandFromWater) {
    ASSERT_GE(worldMap().levels.size(), 3U);
    for (const WorldLevel& level : worldMap().levels) {
        SCOPED_TRACE(level.tolerance);
        EXPECT_TRUE(isLand(level, {48, 10}));     // Ulm
        EXPECT_TRUE(isLand(level, {-25, 134}));   // the middle of Australia
        EXPECT_TRUE(isLand(level, {40, -100}));   // Nebraska
        EXPECT_FALSE(isLand(level, {30, -40}));   // the Atlantic
        EXPECT_FALSE(isLand(level, {42, 50.5}));  // the Caspian Sea, a hole in the land
        EXPECT_FALSE(isLand(level, {0, 0}));
    }
}

TEST(WorldMap, LevelsGrowFiner) {
    const auto& levels = worldMap().levels;
    for (std::size_t i = 1; i < levels.size(); ++i) {
        EXPECT_LT(levels[i].tolerance, levels[i - 1].tolerance);
        EXPECT_GT(levels[i].land.size(), levels[i - 1].land.size());
    }
    EXPECT_EQ(&worldMap().level(100), &levels.front());
    EXPECT_EQ(&worldMap().level(levels[1].tolerance), &levels[1]);
    EXPECT_EQ(&worldMap().level(0), &levels.back());
}

TEST(WorldMap, NoCoastRunsAlongTheDateLineOrRoundThePole) {
    for (const WorldLevel& level : worldMap().levels) {
        EXPECT_FALSE(level.coasts.empty());
        for (const WorldLine& coast : level.coasts) {
            for (std::size_t i = 1; i < coast.points.size(); ++i) {
                const GeoPoint a = coast.points[i - 1];
                const GeoPoint b = coast.points[i];
                EXPECT_FALSE(std::abs(a.lon) == 180 && std::abs(b.lon) == 180) << a.lat;
                EXPECT_GT(b.lat, -89);
            }
        }
    }
}

TEST(WorldMap, CapsHoldTheirLines) {
    for (const WorldLine& line : worldMap().levels.front().land) {
        for (const GeoPoint& point : line.points) {
            EXPECT_GE(dot(unitVector(point), line.cap.middle), std::cos(line.cap.radius) - 1e-12);
        }
    }
}

TEST(WorldMap, FileIsReadAsWritten) {
    const auto map = decodedWorldMap(smallFile());
    ASSERT_EQ(map.levels.size(), 1U);
    const WorldLevel& level = map.levels[0];
    EXPECT_DOUBLE_EQ(level.tolerance, 0.05);
    ASSERT_EQ(level.land.size(), 1U);
    EXPECT_EQ(level.land[0].points, (GeoRing{{20, 10}, {20, 11}, {21, 11}}));
    ASSERT_EQ(level.coasts.size(), 1U);
    EXPECT_EQ(level.coasts[0].points, (GeoRing{{20, 10}, {20, 11}, {21, 11}, {20, 10}}));
    ASSERT_EQ(level.borders.size(), 1U);
    EXPECT_EQ(level.borders[0].points, (GeoRing{{0, 0}, {0.01, -0.01}}));
}

TEST(WorldMap, EdgeAlongTheDateLineIsNoCoast) {
    // 180 E 0 N, 180 E 1 N, 179 E 1 N
    const auto map =
        decodedWorldMap(QByteArray::fromHex("56574d31"
                                            "01"
                                            "05"
                                            "01"
                                            "03"
                                            "a09902"
                                            "00"
                                            "00"
                                            "c801"
                                            "c701"
                                            "00"
                                            "00"));
    ASSERT_EQ(map.levels.size(), 1U);
    ASSERT_EQ(map.levels[0].coasts.size(), 1U);
    EXPECT_EQ(map.levels[0].coasts[0].points, (GeoRing{{1, 180}, {1, 179}, {0, 180}}));
}

TEST(WorldMap, BrokenFileGivesAnEmptyMap) {
    const QByteArray good = smallFile();
    for (qsizetype length = 0; length < good.size(); ++length) {
        EXPECT_TRUE(decodedWorldMap(good.first(length)).levels.empty()) << length;
    }
    EXPECT_TRUE(decodedWorldMap(good + '\0').levels.empty());
    EXPECT_TRUE(decodedWorldMap("another file").levels.empty());
    EXPECT_TRUE(worldMap().level(1).land.size() > 0);
    EXPECT_TRUE(WorldMap().level(1).land.empty());
}

TEST(WorldMap, NumbersBeyondTheEarthOrTheFileAreRefused) {
    const auto isRefused = [](const char* hex) {
        return decodedWorldMap(QByteArray::fromHex(hex)).levels.empty();
    };
    EXPECT_TRUE(
        isRefused("56574d31"
                  "01"
                  "05"
                  "00"
                  "01"
                  "02"
                  "a29902"
                  "00"
                  "00"
                  "00"));  // 180.01
    EXPECT_TRUE(
        isRefused("56574d31"
                  "01"
                  "05"
                  "00"
                  "01"
                  "02"
                  "00"
                  "d28c01"
                  "00"
                  "00"));  // 90.01
    EXPECT_TRUE(
        isRefused("56574d31"
                  "01"
                  "05"
                  "ffffffff0f"
                  "00"));  // so many rings
    EXPECT_TRUE(
        isRefused("56574d31"
                  "01"
                  "05"
                  "01"
                  "ffffffff0f"
                  "0000"));  // so many points
    EXPECT_TRUE(
        isRefused("56574d31"
                  "ffffffff0f"));  // so many levels
    EXPECT_TRUE(
        isRefused("56574d31"
                  "01"
                  "05"
                  "ffffffffffffffffff01"));  // an endless number
    EXPECT_TRUE(
        isRefused("56574d31"
                  "01"
                  "05"
                  "01"
                  "02"
                  "00"
                  "00"
                  "02"
                  "02"
                  "00"));  // no ring
}

TEST(WorldMap, AnySpoiltByteIsSurvived) {
    const QByteArray good = worldFile();
    ASSERT_GT(good.size(), 1000);
    for (qsizetype at = 4; at < good.size(); at += good.size() / 12) {
        QByteArray spoilt = good;
        spoilt[at] = static_cast<char>(spoilt[at] ^ 0x80);
        for (const WorldLevel& level : decodedWorldMap(spoilt).levels) {
            for (const WorldLine& ring : level.land) EXPECT_GE(ring.points.size(), 3U);
        }
    }
}

}  // namespace
}  // namespace veloran::test
