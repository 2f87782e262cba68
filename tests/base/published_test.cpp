#include "base/published.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veloran {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PublishedTest : public ::testing::Test {
  protected:
    void note(const char* what, int value) {
        events.push_back(std::string(what) + " " + std::to_string(value));
    }

    ChangeNotifier notifier;
    Published<int> field{notifier, 1};
    std::vector<std::string> events;
    ChangeNotifier::Subscription told =
        notifier.subscribe([this] { note("told of", field.get()); });
};

TEST_F(PublishedTest, TellsBeforeEachAssignmentAlsoOfAnEqualValue) {
    field = 2;
    field = 2;
    EXPECT_THAT(events, ElementsAre("told of 1", "told of 2"));
    EXPECT_EQ(*field, 2);
}

TEST_F(PublishedTest, AssignmentFromAnotherFieldTellsToo) {
    Published<int> other{notifier, 7};
    field = other;
    EXPECT_THAT(events, ElementsAre("told of 1"));
    EXPECT_EQ(*field, 7);
}

TEST_F(PublishedTest, InitialiseIsSilent) {
    field.setAfterChange([this](int value) { note("after", value); });
    field.initialise(3);
    EXPECT_THAT(events, IsEmpty());
    EXPECT_EQ(*field, 3);
}

TEST_F(PublishedTest, AfterChangeRunsWithTheNewValueInPlace) {
    field.setAfterChange([this](int value) {
        note("after", value);
        note("field", *field);
    });
    field = 4;
    EXPECT_THAT(events, ElementsAre("told of 1", "after 4", "field 4"));
}

TEST_F(PublishedTest, FurtherActionsRunBehindTheFirst) {
    field.setAfterChange([this](int value) { note("first", value); });
    field.alsoAfterChange([this](int value) { note("second", value); });
    field.alsoAfterChange([this](int value) { note("third", value); });
    field = 5;
    EXPECT_THAT(events, ElementsAre("told of 1", "first 5", "second 5", "third 5"));
}

TEST_F(PublishedTest, AFurtherActionNeedsNoFirst) {
    field.alsoAfterChange([this](int value) { note("only", value); });
    field = 6;
    EXPECT_THAT(events, ElementsAre("told of 1", "only 6"));
}

TEST_F(PublishedTest, ListenersAreToldInTheOrderTheyCameUntilTheyGo) {
    auto second = notifier.subscribe([this] { note("second of", *field); });
    field = 2;
    told.reset();
    field = 3;
    EXPECT_THAT(events, ElementsAre("told of 1", "second of 1", "second of 2"));
}

TEST_F(PublishedTest, AListenerDroppedDuringANotificationIsNotCalled) {
    ChangeNotifier::Subscription later;
    const auto dropper = notifier.subscribe([&later] { later.reset(); });
    later = notifier.subscribe([this] { note("later of", *field); });
    field = 2;
    EXPECT_THAT(events, ElementsAre("told of 1"));
}

TEST_F(PublishedTest, AListenerMayDropItself) {
    ChangeNotifier::Subscription once;
    once = notifier.subscribe([this, &once] {
        once.reset();
        note("once of", *field);
    });
    field = 2;
    field = 3;
    EXPECT_THAT(events, ElementsAre("told of 1", "once of 1", "told of 2"));
}

TEST_F(PublishedTest, AListenerAddedDuringANotificationIsCalledFromTheNextOneOn) {
    ChangeNotifier::Subscription added;
    const auto adder = notifier.subscribe([this, &added] {
        if (!added) added = notifier.subscribe([this] { note("added of", *field); });
    });
    field = 2;
    EXPECT_THAT(events, ElementsAre("told of 1"));
    field = 3;
    EXPECT_THAT(events, ElementsAre("told of 1", "told of 2", "added of 2"));
}

}  // namespace
}  // namespace veloran
