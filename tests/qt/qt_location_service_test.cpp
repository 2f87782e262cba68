#include "qt/qt_location_service.h"

#include <gtest/gtest.h>

#include <memory>

#include "qt/qt_main_loop.h"
#include "qt/spin.h"

namespace veloran {
namespace {

// Whether a place is found depends on the machine; a test machine has no service.

TEST(QtLocationService, EveryQuestionIsAnsweredOnceAndLater) {
    QtMainLoop loop;
    constexpr double kShortPatience = 1;
    QtLocationService service(loop, kShortPatience);
    int answers = 0;
    for (int i = 0; i < 3; ++i) {
        service.locate([&answers](const auto&) { ++answers; });
    }
    EXPECT_EQ(answers, 0);
    EXPECT_TRUE(test::spinUntil([&] { return answers == 3; }));
    test::spinFor(5);
    EXPECT_EQ(answers, 3);
}

TEST(QtLocationService, EndingItDropsTheQuestions) {
    QtMainLoop loop;
    auto service = std::make_unique<QtLocationService>(loop);
    int answers = 0;
    service->locate([&answers](const auto&) { ++answers; });
    service.reset();
    test::spinFor(20);
    EXPECT_EQ(answers, 0);
}

}  // namespace
}  // namespace veloran
