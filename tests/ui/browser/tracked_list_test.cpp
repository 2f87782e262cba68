#include "ui/browser/tracked_list.h"

#include "../ui_fixture.h"

namespace veloran::test {
namespace {

class TrackedListTest : public testing::Test {
  protected:
    void SetUp() override {
        list.resize(220, 200);
        model.setSatellites(three);
        list.show();
        QCoreApplication::processEvents();
    }

    TrackedColumns columns(int row) const {
        return trackedColumns(list.visualRect(model.index(row)));
    }
    QString help(const QPoint& at) const {
        const QModelIndex index = list.indexAt(at);
        const auto& delegate = *qobject_cast<TrackedRowDelegate*>(list.itemDelegate());
        return delegate.helpAt(at, list.visualRect(index), index);
    }

    const std::vector<SatellitePtr> three{std::make_shared<Satellite>("AO-7", 7530),
                                          std::make_shared<Satellite>("ISS", 25544),
                                          std::make_shared<Satellite>(std::string(200, 'W'), 7)};
    TrackedModel model;
    TrackedList list{model};
    QSignalSpy removed{&list, &TrackedList::removed};
};

TEST_F(TrackedListTest, RowsSpeak) {
    EXPECT_EQ(model.index(1).data(Qt::DisplayRole), "ISS");
    EXPECT_EQ(model.index(1).data(Qt::AccessibleTextRole), "ISS, NORAD 25544");
}

TEST_F(TrackedListTest, CrossRemovesAndTheRestOfTheRowDoesNot) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, columns(1).name.center());
    QTest::mouseClick(list.viewport(), Qt::RightButton, {}, columns(1).remove.center());
    EXPECT_EQ(removed.count(), 0);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, columns(1).remove.center());
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][0].value<SatellitePtr>(), three[1]);
}

TEST_F(TrackedListTest, ReleaseOnAnotherCrossDoesNothing) {
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, columns(0).remove.center());
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, columns(1).remove.center());
    EXPECT_EQ(removed.count(), 0);
}

TEST_F(TrackedListTest, DeleteRemovesTheCurrentRowAndStaysNear) {
    QTest::keyClick(&list, Qt::Key_Delete);
    list.setCurrentIndex(model.index(2));
    removed.clear();
    QTest::keyClick(&list, Qt::Key_Delete);
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed[0][0].value<SatellitePtr>(), three[2]);
    model.setSatellites({three[0], three[1]});
    EXPECT_EQ(list.currentIndex().row(), 1) << "the last one was taken away";
    model.setSatellites({});
    EXPECT_FALSE(list.currentIndex().isValid());
}

TEST_F(TrackedListTest, HelpTellsOfTheCrossAndOfCutNames) {
    EXPECT_EQ(help(columns(0).remove.center()), "Remove from tracked list");
    EXPECT_EQ(help(columns(0).name.center()), "");
    EXPECT_EQ(help(columns(2).name.center()), QString(200, 'W'));
}

TEST_F(TrackedListTest, SameSatellitesLeaveTheListAlone) {
    const QSignalSpy resets(&model, &TrackedModel::modelReset);
    model.setSatellites(three);
    EXPECT_EQ(resets.count(), 0);
}

}  // namespace
}  // namespace veloran::test
