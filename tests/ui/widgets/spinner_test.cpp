#include "ui/widgets/spinner.h"

#include <gtest/gtest.h>

#include <QImage>

#include "support/simulated_machine.h"

namespace veloran {
namespace {

class SpinnerTest : public ::testing::Test {
  protected:
    QImage look() { return spinner.grab().toImage(); }

    test::SimulatedLoop loop{Instant{0}};
    Spinner spinner{loop, 14};
};

TEST_F(SpinnerTest, TurnsOnceASecondWhileItIsShown) {
    spinner.show();
    const QImage first = look();
    loop.advance(0.1);
    EXPECT_NE(look(), first);
    loop.advance(0.87);
    EXPECT_EQ(look(), first) << "twelve steps of 0.08 s";
}

TEST_F(SpinnerTest, StandsWhileItIsHidden) {
    spinner.show();
    spinner.hide();
    const QImage first = look();
    loop.advance(0.5);
    EXPECT_EQ(look(), first);
    EXPECT_EQ(loop.timerCount(), 0U);
}

}  // namespace
}  // namespace veloran
