#include "ui/map/map_texts.h"

#include <gtest/gtest.h>

namespace veloran {
namespace {

TEST(MapTexts, PositionIsToldByHemisphere) {
    const Satellite satellite("RS-44", 44909);
    EXPECT_EQ(positionInWords(satellite, SubSatellitePoint{12.34, -45.6, 1234.4}),
              "RS-44 over 12.3° N 45.6° W, 1234 km high");
    EXPECT_EQ(positionInWords(satellite, SubSatellitePoint{-0.5, 0, 400}),
              "RS-44 over 0.5° S 0.0° E, 400 km high");
}

TEST(MapTexts, TheMoonIsAway) {
    Satellite moon("Moon", -2);
    moon.bodyKind = BodyKind::moon;
    EXPECT_EQ(positionInWords(moon, SubSatellitePoint{1, 2, 384400}),
              "Moon over 1.0° N 2.0° E, 384400 km away");
}

TEST(MapTexts, BodyWithoutAnOrbitHasNoPosition) {
    EXPECT_EQ(positionInWords(Satellite("RS-44", 44909), std::nullopt),
              "RS-44, its position is not known");
}

}  // namespace
}  // namespace veloran
