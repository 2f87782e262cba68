#include "ui/scene/resize_pace.h"

#include "../ui_fixture.h"

namespace veloran::test {
namespace {

class ResizePaceTest : public ::testing::Test {
  protected:
    void drag() {
        for (int i = 0; i < ResizePace::kDrag; ++i) pace.resized();
    }
    /// False only where these lines take longer than the pace each time.
    bool stretchesInADrag() {
        for (int i = 0; i < 100; ++i) {
            pace.drawnAnew();
            drag();
            if (pace.mayStretch()) return true;
        }
        return false;
    }

    QWidget widget;
    ResizePace pace{widget};
};

TEST_F(ResizePaceTest, FewChangesOfSizeAreDrawnAnew) {
    pace.drawnAnew();
    for (int i = 1; i < ResizePace::kDrag; ++i) {
        pace.resized();
        EXPECT_FALSE(pace.mayStretch());
    }
}

TEST_F(ResizePaceTest, DragIsStretchedUntilTheSizeRests) {
    ASSERT_TRUE(stretchesInADrag());
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            pace.drawnAnew();
            return !pace.mayStretch();
        },
        30000));
}

TEST_F(ResizePaceTest, WhatWasNeverDrawnIsNotStretched) {
    drag();
    EXPECT_FALSE(pace.mayStretch());
}

TEST_F(ResizePaceTest, StretchedPictureIsDrawnAnewNowAndThen) {
    pace.drawnAnew();
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            drag();
            return !pace.mayStretch();
        },
        30000));
}

}  // namespace
}  // namespace veloran::test
