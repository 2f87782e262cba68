#include "ui/map/world_map.h"

#include <QFile>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace veloran {

namespace {

constexpr char kMagic[] = "VWM1";
constexpr int kUnit = 100;  // steps in a degree
constexpr std::uint64_t kMaxLevels = 16;

/// Reads numbers from the front; the first bad one makes everything after it bad.
class Reader {
  public:
    explicit Reader(QByteArrayView bytes) : bytes_(bytes) {}

    bool isBroken() const { return broken_; }
    bool isAtEnd() const { return bytes_.isEmpty(); }

    std::uint64_t number() {
        std::uint64_t value = 0;
        for (int shift = 0; shift < 35 && !bytes_.isEmpty(); shift += 7) {
            const auto byte = static_cast<std::uint8_t>(bytes_.front());
            bytes_ = bytes_.sliced(1);
            value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
            if (byte < 0x80) return value;
        }
        broken_ = true;
        return 0;
    }

    std::int64_t signedNumber() {
        const std::uint64_t value = number();
        const auto half = static_cast<std::int64_t>(value / 2);
        return value % 2 == 0 ? half : -half - 1;
    }

    /// A number of things that take at least `bytes` each.
    std::size_t count(std::size_t bytes) {
        const std::uint64_t value = number();
        if (value > static_cast<std::uint64_t>(bytes_.size()) / bytes) broken_ = true;
        return broken_ ? 0 : static_cast<std::size_t>(value);
    }

    GeoRing points(std::size_t leastPoints) {
        GeoRing result(count(2));
        std::int64_t lon = 0;
        std::int64_t lat = 0;
        for (GeoPoint& point : result) {
            lon += signedNumber();
            lat += signedNumber();
            if (std::abs(lon) > 180 * kUnit || std::abs(lat) > 90 * kUnit) broken_ = true;
            if (broken_) return {};
            point = {static_cast<double>(lat) / kUnit, static_cast<double>(lon) / kUnit};
        }
        if (result.size() < leastPoints) broken_ = true;
        return result;
    }

    std::vector<WorldLine> lines(std::size_t leastPoints) {
        std::vector<WorldLine> result(count(1 + 2 * leastPoints));
        for (WorldLine& line : result) {
            line.points = points(leastPoints);
            if (broken_) return {};
            line.cap = capAround(unitVectors(line.points));
        }
        return result;
    }

  private:
    QByteArrayView bytes_;
    bool broken_ = false;
};

bool isOnDateLine(GeoPoint point) {
    return std::abs(point.lon) == 180;
}

/// The outline of a ring in pieces, without the edges along the date line.
void appendCoasts(const WorldLine& land, std::vector<WorldLine>& coasts) {
    const GeoRing& ring = land.points;
    GeoRing piece = {ring.front()};
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const GeoPoint next = ring[(i + 1) % ring.size()];
        if (isOnDateLine(ring[i]) && isOnDateLine(next)) {
            if (piece.size() > 1) coasts.push_back({piece, land.cap});
            piece.clear();
        }
        piece.push_back(next);
    }
    if (piece.size() > 1) coasts.push_back({piece, land.cap});
}

}  // namespace

const WorldLevel& WorldMap::level(double toleranceDegrees) const {
    static const WorldLevel none;
    for (const WorldLevel& level : levels) {
        if (level.tolerance <= toleranceDegrees) return level;
    }
    return levels.empty() ? none : levels.back();
}

WorldMap decodedWorldMap(QByteArrayView bytes) {
    const QByteArrayView magic(kMagic);
    if (!bytes.startsWith(magic)) return {};
    Reader reader(bytes.sliced(magic.size()));
    const std::uint64_t levels = reader.number();
    if (levels > kMaxLevels) return {};
    WorldMap map;
    map.levels.resize(static_cast<std::size_t>(levels));
    for (WorldLevel& level : map.levels) {
        level.tolerance = static_cast<double>(reader.number()) / kUnit;
        level.land = reader.lines(3);
        level.borders = reader.lines(2);
        if (reader.isBroken()) return {};
        for (const WorldLine& ring : level.land) appendCoasts(ring, level.coasts);
    }
    return reader.isAtEnd() && !reader.isBroken() ? map : WorldMap{};
}

const WorldMap& worldMap() {
    static const WorldMap map = [] {
        QFile file(":/veloran/world_map.bin");
        return file.open(QIODevice::ReadOnly) ? decodedWorldMap(file.readAll()) : WorldMap{};
    }();
    return map;
}

}  // namespace veloran
