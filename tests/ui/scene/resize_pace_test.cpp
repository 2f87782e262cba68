#include "ui/scene/resize_pace.h"

#include "../ui_fixture.h"

namespace veloran::test {
namespace {

class ResizePaceTest : public ::testing::Test {
  protected:
    void drag() {
        for (int i = 0; i < ResizePace::kDrag; ++i) {
            loop.advance(0.01);
            pace.resized();
        }
    }

    SimulatedLoop loop{Instant{817000000.0}};
    QWidget widget;
    ResizePace pace{widget, loop, loop};
};

TEST_F(ResizePaceTest, FewChangesOfSizeAreDrawnAnew) {
    pace.drawnAnew();
    for (int i = 1; i < ResizePace::kDrag; ++i) {
        pace.resized();
        EXPECT_FALSE(pace.mayStretch());
    }
}

TEST_F(ResizePaceTest, ChangesFarApartAreNoDrag) {
    for (int i = 0; i < 3 * ResizePace::kDrag; ++i) {
        pace.drawnAnew();
        pace.resized();
        EXPECT_FALSE(pace.mayStretch());
        loop.advance(ResizePace::kSeconds + 0.01);
    }
}

TEST_F(ResizePaceTest, DragIsStretchedUntilTheSizeRests) {
    pace.drawnAnew();
    drag();
    EXPECT_TRUE(pace.mayStretch());
    loop.advance(ResizePace::kSeconds + 0.01);
    pace.drawnAnew();
    EXPECT_FALSE(pace.mayStretch());
}

TEST_F(ResizePaceTest, WhatWasNeverDrawnIsNotStretched) {
    drag();
    EXPECT_FALSE(pace.mayStretch());
}

TEST_F(ResizePaceTest, StretchedPictureIsDrawnAnewNowAndThen) {
    pace.drawnAnew();
    drag();
    ASSERT_TRUE(pace.mayStretch());
    for (int i = 0; i < 3; ++i) drag();
    EXPECT_FALSE(pace.mayStretch()) << "0.15 s after the last drawing";
}

TEST_F(ResizePaceTest, ClockThatIsSetBackEndsAStretch) {
    pace.drawnAnew();
    drag();
    loop.jumpClock(-3600);
    EXPECT_FALSE(pace.mayStretch());
}

}  // namespace
}  // namespace veloran::test
