#include "ui/scene/scene_painter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <limits>

#include "ui/theme.h"

namespace veloran {
namespace {

QImage painted(const scene::Scene& scene) {
    QImage image(20, 20, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    ScenePainter(painter).draw(scene);
    return image;
}

TEST(ScenePainter, ShapesAreDrawnInTheirColoursAndOrder) {
    const QImage image = painted({scene::Disc{{10, 10}, 8, {Ink::red}},
                                  scene::Line{{0, 10}, {20, 10}, {Ink::cyan, 1, 4}},
                                  scene::Polyline{{{1, 0}, {1, 8}}, {Ink::yellow, 1, 2}}});
    EXPECT_EQ(image.pixelColor(10, 5), Theme::color(Ink::red));
    EXPECT_EQ(image.pixelColor(10, 10), Theme::color(Ink::cyan)) << "the later shape is on top";
    EXPECT_EQ(image.pixelColor(1, 4), Theme::color(Ink::yellow));
    EXPECT_EQ(image.pixelColor(19, 19), QColor(Qt::black));
}

TEST(ScenePainter, LinesEndWhereTheirPointsDo) {
    const scene::Stroke stroke{Ink::cyan, 1, 4};
    const QImage image = painted({scene::Line{{6, 4}, {14, 4}, stroke},
                                  scene::Polyline{{{6, 14}, {10, 14}, {14, 14}}, stroke}});
    for (const int y : {4, 14}) {
        EXPECT_EQ(image.pixelColor(6, y), Theme::color(Ink::cyan));
        EXPECT_EQ(image.pixelColor(13, y), Theme::color(Ink::cyan));
        EXPECT_EQ(image.pixelColor(5, y), QColor(Qt::black));
        EXPECT_EQ(image.pixelColor(14, y), QColor(Qt::black));
    }
}

TEST(ScenePainter, ClosedOutlineHasNoNotchWhereItBegins) {
    const QImage image =
        painted({scene::Polyline{{{4, 4}, {16, 4}, {16, 16}, {4, 16}, {4, 4}}, {Ink::cyan, 1, 6}}});
    EXPECT_EQ(image.pixelColor(3, 2), image.pixelColor(16, 2));
    EXPECT_EQ(image.pixelColor(2, 3), Theme::color(Ink::cyan));
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::black));
}

TEST(ScenePainter, RingLeavesItsInsideAndOpacityMixes) {
    const QImage image = painted({scene::Ring{{10, 10}, 8, {Ink::primary, 0.5, 4}}});
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::black));
    EXPECT_NEAR(image.pixelColor(10, 2).red(), Theme::color(Ink::primary).red() / 2, 2);
}

TEST(ScenePainter, RegionIsFilledOnceWhereItsRingsAreOdd) {
    const std::vector<scene::Point> outer = {{1, 1}, {19, 1}, {19, 19}, {1, 19}};
    const std::vector<scene::Point> hole = {{6, 6}, {14, 6}, {14, 14}, {6, 14}};
    const std::vector<scene::Point> beside = {{12, 2}, {18, 2}, {18, 18}, {12, 18}};
    QImage image = painted({scene::Region{{outer, hole}, {Ink::primary, 0.5}}});
    EXPECT_NEAR(image.pixelColor(3, 10).red(), Theme::color(Ink::primary).red() / 2, 2);
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::black));
    image = painted({scene::Region{{hole, beside}, {Ink::primary, 0.5}}});
    EXPECT_EQ(image.pixelColor(13, 10), QColor(Qt::black)) << "whichever way the rings go";
    EXPECT_NEAR(image.pixelColor(16, 10).red(), Theme::color(Ink::primary).red() / 2, 2);
}

TEST(ScenePainter, PlaceThatIsNoneIsLeftOut) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const scene::Stroke stroke{Ink::cyan, 1, 2};
    const QImage whole = painted({scene::Polyline{{{2, 2}, {18, 18}}, stroke}});
    for (const double bad : {kNone, kInfinity, -kInfinity}) {
        const scene::Point nowhere{10, bad};
        EXPECT_EQ(painted({scene::Polyline{{{2, 2}, nowhere, {18, 18}}, stroke}}), whole) << bad;
        const QImage nothing =
            painted({scene::Disc{nowhere, 5, {Ink::red}}, scene::Ring{nowhere, 5, stroke},
                     scene::Line{{10, 10}, nowhere, stroke},
                     scene::Region{{{{10, 10}, nowhere}}, {Ink::red}},
                     scene::Text{.at = nowhere, .text = "A", .fill = {Ink::primary}, .pixels = 10},
                     scene::Tag{nowhere, "A", 10, QFont::Bold, 2, 2, 2},
                     scene::Icon{nowhere, 10, Symbol::grid, Ink::primary}});
        EXPECT_EQ(nothing, painted({})) << bad;
    }
}

}  // namespace
}  // namespace veloran
