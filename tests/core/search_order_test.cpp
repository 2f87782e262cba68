#include "core/search_order.h"

#include <gmock/gmock.h>

namespace veloran {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

SearchBody rising(double at) {
    return {.firstRise = Instant{at}};
}

TEST(SearchOrder, TrackedThenShownThenQueuedThenNewComeBeforeTheRest) {
    const std::vector<SearchBody> bodies{
        rising(5),         {.isNew = true},     {.isQueued = true, .firstRise = Instant{9}},
        {.isShown = true}, {.isTracked = true},
    };
    EXPECT_THAT(searchOrder(bodies), ElementsAre(4, 3, 2, 1, 0));
}

TEST(SearchOrder, TheRestComeByTheirFirstRiseAndThoseWithoutOneLast) {
    const std::vector<SearchBody> bodies{{}, rising(30), rising(-10), {}, rising(20)};
    EXPECT_THAT(searchOrder(bodies), ElementsAre(2, 4, 1, 0, 3));
}

TEST(SearchOrder, QueuedOnesComeByTheirFirstRiseToo) {
    const std::vector<SearchBody> bodies{{.isQueued = true, .firstRise = Instant{9}},
                                         {.isQueued = true, .firstRise = Instant{4}}};
    EXPECT_THAT(searchOrder(bodies), ElementsAre(1, 0));
}

TEST(SearchOrder, HighestOfSeveralReasonsCounts) {
    const std::vector<SearchBody> bodies{{.isShown = true, .isQueued = true, .isNew = true},
                                         {.isTracked = true, .isQueued = true},
                                         {.isQueued = true, .isNew = true}};
    EXPECT_THAT(searchOrder(bodies), ElementsAre(1, 0, 2));
}

TEST(SearchOrder, EqualOnesStayInTheirOrder) {
    EXPECT_THAT(searchOrder(std::vector<SearchBody>(4, rising(7))), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(searchOrder({}), IsEmpty());
}

}  // namespace
}  // namespace veloran
