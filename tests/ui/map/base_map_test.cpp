#include "ui/map/base_map.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "ui/map/globe_projection.h"
#include "ui/map/globe_texture.h"
#include "ui/theme.h"

namespace veloran::test {
namespace {

constexpr QSize kView(420, 400);
constexpr MapStyle kFlat = MapStyle::standard;
constexpr BaseMapColors kColors = {.beyond = 0xff000000,
                                   .water = 0xff0000ff,
                                   .land = 0xff00ff00,
                                   .coast = 0xffffffff,
                                   .border = 0xffffff00,
                                   .graticule = 0x00000000,
                                   .air = 0xff00ffff};

/// Tells its place by its colour: red grows eastward, green northward.
QImage graduatedEarth() {
    QImage earth(1024, 512, QImage::Format_RGB32);
    for (int y = 0; y < 512; ++y) {
        for (int x = 0; x < 1024; ++x) earth.setPixel(x, y, qRgb(x / 4, 255 - y / 2, 0));
    }
    return earth;
}

/// The pixel at a place of the ground; of its copies, one within the view.
QRgb pixelAt(const QImage& picture, MapStyle style, const MapCamera& camera, GeoPoint point,
             double scale = 1) {
    for (const auto& at : makeProjection(style, camera, QSizeF(kView))->toScreen(point)) {
        const QPoint pixel(static_cast<int>(std::floor(at.x * scale)),
                           static_cast<int>(std::floor(at.y * scale)));
        if (picture.valid(pixel)) return picture.pixel(pixel);
    }
    ADD_FAILURE() << point.lat << ' ' << point.lon << " is out of view";
    return 0;
}

TEST(BaseMap, FlatMapHasLandWaterAndAPoleOfLand) {
    for (const double lon : {0.0, 180.0}) {
        for (const double scale : {1.0, 2.0}) {
            const MapCamera camera{{0, lon}, 1e8, 0};
            const auto picture = baseMap(kFlat, camera, kView, scale, {}, kColors);
            EXPECT_EQ(picture.width(), 420 * scale);
            EXPECT_EQ(picture.devicePixelRatio(), scale);
            EXPECT_EQ(pixelAt(picture, kFlat, camera, {-25, 134}, scale), kColors.land);
            EXPECT_EQ(pixelAt(picture, kFlat, camera, {67, 179.9}, scale), kColors.land);
            EXPECT_EQ(pixelAt(picture, kFlat, camera, {0, -150}, scale), kColors.water);
            EXPECT_EQ(pixelAt(picture, kFlat, camera, {42, 50.6}, scale), kColors.water);
            for (double at = -175; at < 180; at += 25) {
                EXPECT_EQ(pixelAt(picture, kFlat, camera, {-89, at}, scale), kColors.land) << at;
            }
            EXPECT_EQ(picture.pixel(5, 5), kColors.beyond);
        }
    }
}

TEST(BaseMap, GlobeWithoutPictureIsFilledFromTheCoastlines) {
    for (const MapStyle style : {MapStyle::imagery, MapStyle::hybrid}) {
        const MapCamera camera{{20, 10}, 3e7, 0};
        const auto picture = baseMap(style, camera, kView, 1, {}, kColors);
        EXPECT_EQ(pixelAt(picture, style, camera, {27, 5}), kColors.land);
        EXPECT_EQ(pixelAt(picture, style, camera, {-20, -10}), kColors.water);
        EXPECT_EQ(picture.pixel(2, 2), kColors.beyond);
    }
}

TEST(BaseMap, SouthPoleOfTheGlobeIsLand) {
    const MapCamera camera{{-80, 10}, 2e7, 30};
    const auto picture = baseMap(MapStyle::imagery, camera, kView, 1, {}, kColors);
    EXPECT_EQ(pixelAt(picture, MapStyle::imagery, camera, {-89, 0}), kColors.land);
    EXPECT_EQ(pixelAt(picture, MapStyle::imagery, camera, {-60, 90}), kColors.water);
}

TEST(BaseMap, EveryPixelOfTheGlobeShowsThePlaceThatLiesBelowIt) {
    const QImage earth = graduatedEarth();
    for (const MapCamera& camera : {MapCamera{{20, 10}, 3e7, 0}, MapCamera{{-70, 175}, 2e7, 130},
                                    MapCamera{{89, -60}, 1e7, 300}, MapCamera{{1, 3}, 2e6, 45}}) {
        for (const double scale : {1.0, 2.0}) {
            const auto picture = baseMap(MapStyle::imagery, camera, kView, scale, earth, kColors);
            const GlobeProjection globe(camera, QSizeF(kView));
            int seen = 0;
            for (int y = 0; y < picture.height(); y += 7) {
                for (int x = 0; x < picture.width(); x += 7) {
                    const auto at = globe.toGeo({(x + 0.5) / scale, (y + 0.5) / scale});
                    // At the date line the picture itself jumps; at the limb pixels are mixed.
                    if (!at || std::abs(at->lon) > 179 || std::abs(at->lat) > 89) continue;
                    const double radius =
                        std::hypot((x + 0.5) / scale - 210, (y + 0.5) / scale - 200);
                    if (radius > globe.limbRadius() - 2) continue;
                    ++seen;
                    const QRgb pixel = picture.pixel(x, y);
                    ASSERT_NEAR(qRed(pixel), (at->lon + 180) / 360 * 256 - 0.5, 2) << x << ' ' << y;
                    ASSERT_NEAR(qGreen(pixel), (at->lat + 90) / 180 * 256 - 0.5, 2)
                        << x << ' ' << y;
                }
            }
            EXPECT_GT(seen, 1000);
        }
    }
}

TEST(BaseMap, PictureIsReadAcrossTheDateLineWithoutASeam) {
    QImage earth(256, 128, QImage::Format_RGB32);
    earth.fill(qRgb(10, 20, 30));
    for (int y = 0; y < 128; ++y) {
        for (const int x : {0, 255}) earth.setPixel(x, y, qRgb(200, 20, 30));
    }
    const MapCamera camera{{0, 180}, 3e7, 0};
    const auto picture = baseMap(MapStyle::imagery, camera, kView, 2, earth, kColors);
    EXPECT_NEAR(qRed(picture.pixel(420, 400)), 200, 1);
    EXPECT_EQ(qRed(picture.pixel(450, 400)), 10);
    EXPECT_EQ(qRed(picture.pixel(390, 400)), 10);
}

TEST(BaseMap, HybridHasLinesOverThePicture) {
    QImage earth(64, 32, QImage::Format_RGB32);
    earth.fill(Qt::black);
    const MapCamera camera{{45, 10}, 1e7, 0};
    const auto plain = baseMap(MapStyle::imagery, camera, kView, 1, earth, kColors);
    const auto lined = baseMap(MapStyle::hybrid, camera, kView, 1, earth, kColors);
    int bright = 0;
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 420; ++x) {
            if (std::hypot(x - 210, y - 200) > 150) continue;
            EXPECT_EQ(plain.pixel(x, y), 0xff000000);
            if (qRed(lined.pixel(x, y)) > 60) ++bright;
        }
    }
    EXPECT_GT(bright, 1000);
    EXPECT_LT(bright, 20000);
}

TEST(BaseMap, LimbIsSmoothAndBesideItThereIsOnlyAir) {
    QImage earth(64, 32, QImage::Format_RGB32);
    earth.fill(Qt::red);
    const auto picture = baseMap(MapStyle::imagery, {{0, 0}, 3e7, 0}, kView, 1, earth, kColors);
    EXPECT_EQ(picture.pixel(210 + 157, 200), qRgb(255, 0, 0));
    EXPECT_EQ(qRed(picture.pixel(210 + 162, 200)), 0);
    EXPECT_GT(qBlue(picture.pixel(210 + 162, 200)), 20);
    EXPECT_EQ(picture.pixel(210 + 170, 200), kColors.beyond);
}

TEST(BaseMap, SamePictureForTheSameArguments) {
    const QImage earth = graduatedEarth();
    for (const MapStyle style : kMapStyles) {
        const auto camera = fittedCamera(style, 30);
        EXPECT_EQ(baseMap(style, camera, kView, 1, earth, kColors),
                  baseMap(style, camera, kView, 1, earth, kColors));
    }
}

TEST(BaseMap, EmptyViewGivesNoPicture) {
    for (const MapStyle style : kMapStyles) {
        EXPECT_TRUE(baseMap(style, fittedCamera(style, 0), {0, 0}, 1, {}, kColors).isNull());
    }
}

TEST(BaseMap, PictureOfOnePixelIsEnough) {
    QImage earth(1, 1, QImage::Format_RGB32);
    earth.fill(Qt::red);
    const auto picture = baseMap(MapStyle::imagery, {{0, 0}, 3e7, 0}, kView, 1, earth, kColors);
    EXPECT_EQ(picture.pixel(210, 200), qRgb(255, 0, 0));
}

TEST(BaseMap, ColorsFollowTheTheme) {
    Theme::apply(false);
    const auto light = baseMapColors();
    Theme::apply(true);
    const auto dark = baseMapColors();
    EXPECT_NE(light, dark);
    EXPECT_GT(qGray(light.land), qGray(dark.land) + 100);
    EXPECT_GT(qGray(dark.land), qGray(dark.water));
    EXPECT_GT(qGray(light.land), qGray(light.water));
}

}  // namespace
}  // namespace veloran::test
