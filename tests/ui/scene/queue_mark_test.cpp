#include "ui/scene/queue_mark.h"

#include <gtest/gtest.h>

namespace veloran {
namespace {

TEST(QueueMark, OpenCircleForAPassOutsideTheQueue) {
    const auto scene = queueMarkScene(false, 18);
    ASSERT_EQ(scene.size(), 1u);
    const auto& ring = std::get<scene::Ring>(scene[0]);
    EXPECT_EQ(ring.center, (scene::Point{9, 9}));
    EXPECT_EQ(ring.stroke, (scene::Stroke{Ink::secondary, 0.6, 1.5}));
    EXPECT_DOUBLE_EQ(ring.radius, 7.5);
}

TEST(QueueMark, CheckOnACyanDiscForAQueuedPass) {
    const auto scene = queueMarkScene(true, 18);
    ASSERT_EQ(scene.size(), 2u);
    EXPECT_EQ(std::get<scene::Disc>(scene[0]).fill, (scene::Fill{Ink::cyan, 1}));
    const auto& check = std::get<scene::Polyline>(scene[1]).points;
    ASSERT_EQ(check.size(), 3u);
    for (const auto& point : check) {  // inside the disc
        EXPECT_LT((point.x - 9) * (point.x - 9) + (point.y - 9) * (point.y - 9), 8.25 * 8.25);
    }
}

}  // namespace
}  // namespace veloran
