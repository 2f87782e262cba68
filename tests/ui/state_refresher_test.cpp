#include "ui/state_refresher.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include "base/published.h"
#include "ui/patience.h"

namespace veloran {
namespace {

TEST(StateRefresher, ManyChangesOfOneTurnGiveOneRefreshWithTheNewValues) {
    ChangeNotifier changes;
    Published<int> value{changes};
    StateRefresher refresher(changes);
    std::vector<int> read;
    QObject::connect(&refresher, &StateRefresher::refresh, [&] { read.push_back(value); });
    for (int i = 1; i <= 5; ++i) value = i;
    EXPECT_TRUE(read.empty()) << "nothing reads inside the notification";
    ASSERT_TRUE(QTest::qWaitFor([&] { return !read.empty(); }, test::kPatienceMs));
    EXPECT_EQ(read, std::vector{5});
}

TEST(StateRefresher, RefreshesAreAFrameApart) {
    ChangeNotifier changes;
    StateRefresher refresher(changes);
    QElapsedTimer clock;
    std::vector<qint64> moments;
    QObject::connect(&refresher, &StateRefresher::refresh, [&] {
        moments.push_back(clock.elapsed());
        changes.send();
    });
    clock.start();
    changes.send();
    ASSERT_TRUE(QTest::qWaitFor([&] { return moments.size() >= 5; }, test::kPatienceMs));
    for (std::size_t i = 0; i < moments.size(); ++i) {
        EXPECT_GE(moments[i], static_cast<qint64>(i) * (StateRefresher::kFrameMilliseconds - 1));
    }
}

TEST(StateRefresher, ChangeDuringARefreshIsNotLost) {
    ChangeNotifier changes;
    StateRefresher refresher(changes);
    QSignalSpy refreshed(&refresher, &StateRefresher::refresh);
    const auto once = QObject::connect(
        &refresher, &StateRefresher::refresh, &refresher, [&] { changes.send(); },
        Qt::SingleShotConnection);
    changes.send();
    ASSERT_TRUE(QTest::qWaitFor([&] { return refreshed.count() == 2; }, test::kPatienceMs));
}

TEST(StateRefresher, EndsWithItsOwner) {
    ChangeNotifier changes;
    int refreshes = 0;
    {
        StateRefresher refresher(changes);
        QObject::connect(&refresher, &StateRefresher::refresh, [&] { ++refreshes; });
        changes.send();
    }
    changes.send();
    QTest::qWait(2 * StateRefresher::kFrameMilliseconds);
    EXPECT_EQ(refreshes, 0);
}

}  // namespace
}  // namespace veloran
