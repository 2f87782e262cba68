#include <QAbstractButton>
#include <QHelpEvent>
#include <QLabel>
#include <QMessageBox>
#include <QToolTip>

#include "../ui_fixture.h"
#include "ui/formats.h"
#include "ui/pass_list/pass_list_model.h"
#include "ui/pass_list/pass_list_view.h"
#include "ui/pass_list/pass_row_delegate.h"
#include "ui/pass_list/pass_rows_view.h"
#include "ui/theme.h"

namespace veloran::test {
namespace {

class PassQueueViewTest : public UiFixture {
  protected:
    void SetUp() override {
        first = addSatellite("RS-44", 44909, {passAt(start + 1000, 600, 45.9)},
                             {channel("down", 435.64e6)});
        second = addSatellite("SO-50", 27607, {passAt(start + 1300, 600, 61.2)});
        addSatellite("ISS", 25544, {passAt(start + 9000)});
        view.refresh();
        view.resize(600, 400);
        view.show();
        QTest::qWait(0);
    }

    PassRowsView& rows() { return child<PassRowsView>(view, "passList"); }
    PassListModel& passModel() { return *view.findChild<PassListModel*>(); }
    QRect mark(int row) {
        return PassRowDelegate::queueMarkArea(rows().visualRect(passModel().index(row)));
    }
    void clickMark(int row) {
        QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, mark(row).center());
        view.refresh();
    }
    QWidget& badge() { return child<QWidget>(view, "queuedBadge"); }
    QAbstractButton& clear() { return child<QAbstractButton>(view, "clearQueue"); }
    QMessageBox* alert() { return view.findChild<QMessageBox*>("conflictAlert"); }
    bool isQueued(const SatellitePtr& satellite) {
        return state->isPassQueued(*satellite, satellite->passes->front());
    }
    /// Two passes that clash, the second one asked for.
    void raiseConflict() {
        clickMark(0);
        clickMark(1);
        ASSERT_TRUE(alert());
        ASSERT_TRUE(alert()->isVisible());
    }
    void settle() {
        QTest::qWait(0);
        view.refresh();
    }

    SatellitePtr first, second;
    PassListView view{state};
};

TEST_F(PassQueueViewTest, AClickOnTheMarkQueuesAndSelectsNothing) {
    clickMark(0);
    EXPECT_TRUE(isQueued(first));
    EXPECT_FALSE(state->selectedPass->has_value());
    EXPECT_TRUE(passModel().look(0).queued);
    EXPECT_FALSE(passModel().look(1).queued);
    clickMark(0);
    EXPECT_FALSE(isQueued(first));
    EXPECT_FALSE(passModel().look(0).queued);
}

TEST_F(PassQueueViewTest, AClickBesideTheMarkSelectsAndQueuesNothing) {
    const QPoint beside(mark(0).right() + 3, mark(0).center().y());
    QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, beside);
    EXPECT_TRUE(state->selectedPass->has_value());
    EXPECT_TRUE(state->queuedPassIds->empty());
}

TEST_F(PassQueueViewTest, QTogglesTheCurrentRow) {
    rows().setCurrentIndex(passModel().index(2));
    QTest::keyClick(&rows(), Qt::Key_Q);
    EXPECT_EQ(state->queuedPassIds->size(), 1u);
    QTest::keyClick(&rows(), Qt::Key_Q);
    EXPECT_TRUE(state->queuedPassIds->empty());
}

TEST_F(PassQueueViewTest, BadgeAndClearShowOnlyWhileSomethingIsQueued) {
    EXPECT_FALSE(badge().isVisible());
    EXPECT_FALSE(clear().isVisible());
    clickMark(0);
    clickMark(2);
    EXPECT_TRUE(badge().isVisible());
    EXPECT_TRUE(clear().isVisible());
    EXPECT_EQ(clear().font(), Theme::face(12));
    clear().click();
    view.refresh();
    EXPECT_TRUE(state->queuedPassIds->empty());
    EXPECT_FALSE(badge().isVisible());
    EXPECT_FALSE(clear().isVisible());
}

TEST_F(PassQueueViewTest, HelpOfTheMarkSaysWhatAClickWouldDo) {
    const auto helpAt = [this](const QPoint& at) {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, at, rows().viewport()->mapToGlobal(at));
        QApplication::sendEvent(rows().viewport(), &help);
        return QToolTip::text();
    };
    EXPECT_EQ(helpAt(mark(0).center()),
              "Queue this pass for auto-tracking. The scheduler will arm SAT_PROTO at AOS and "
              "disarm at LOS.");
    clickMark(0);
    EXPECT_EQ(helpAt(mark(0).center()),
              "Will be tracked when it rises\nRemove this pass from the auto-track queue");
    state->minAutoTrackElevation = 89.0;
    passModel().updateTimes();
    EXPECT_EQ(helpAt(mark(0).center()),
              "Will not be tracked: stays under the minimum elevation\nRemove this pass from the "
              "auto-track queue");
}

TEST_F(PassQueueViewTest, BadgeTellsWhatBecomesOfEachEntry) {
    clickMark(0);
    clickMark(2);
    const QString rises = QString::fromStdString(listTime(start + 1000));
    EXPECT_TRUE(badge().accessibleDescription().startsWith(
        rises + " RS-44: Will be tracked when it rises\n"))
        << badge().accessibleDescription().toStdString();
    EXPECT_TRUE(badge().toolTip().contains("ISS: Will be tracked when it rises"));

    first->isSelected = false;
    view.hide();
    view.show();
    EXPECT_TRUE(badge().toolTip().contains(
        rises + " RS-44: Will not be tracked: the satellite is no longer selected"))
        << badge().toolTip().toStdString();
}

TEST_F(PassQueueViewTest, AScreenReaderHearsOfTheQueue) {
    clickMark(0);
    const auto spoken = [this](int row) {
        return passModel().index(row).data(Qt::AccessibleTextRole).toString();
    };
    EXPECT_TRUE(spoken(0).endsWith(", queued: Will be tracked when it rises"))
        << spoken(0).toStdString();
    EXPECT_FALSE(spoken(1).contains("queued"));
}

TEST_F(PassQueueViewTest, AConflictAsksWithBothPasses) {
    raiseConflict();
    EXPECT_EQ(alert()->windowTitle(), "Pass conflict");
    EXPECT_EQ(alert()->informativeText(),
              "SO-50 (max 61°) overlaps with already-queued RS-44 (max 45°). Only one pass can "
              "auto-track at a time — choose which to keep.");
    EXPECT_TRUE(alert()->isModal());
}

TEST_F(PassQueueViewTest, MarkupInTheNameOfASatelliteIsNotObeyed) {
    second->name = "<h1>SO-50</h1>";
    raiseConflict();
    for (const QLabel* label : alert()->findChildren<QLabel*>()) {
        if (!label->text().contains("SO-50")) continue;
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        return;
    }
    FAIL() << "the message is nowhere";
}

TEST_F(PassQueueViewTest, ReplaceTakesTheIncomingPass) {
    raiseConflict();
    child<QAbstractButton>(*alert(), "questionAct").click();
    settle();
    EXPECT_FALSE(isQueued(first));
    EXPECT_TRUE(isQueued(second));
    EXPECT_FALSE(state->pendingPassConflict->has_value());
    EXPECT_FALSE(alert());
}

TEST_F(PassQueueViewTest, KeepExistingDropsTheIncomingPass) {
    raiseConflict();
    child<QAbstractButton>(*alert(), "questionKeep").click();
    settle();
    EXPECT_TRUE(isQueued(first));
    EXPECT_FALSE(isQueued(second));
    EXPECT_FALSE(state->pendingPassConflict->has_value());
}

TEST_F(PassQueueViewTest, EscapeAndClosingKeepTheExistingPass) {
    raiseConflict();
    QTest::keyClick(alert(), Qt::Key_Escape);
    settle();
    EXPECT_TRUE(isQueued(first));
    EXPECT_FALSE(state->pendingPassConflict->has_value());
    clickMark(1);
    ASSERT_TRUE(alert());
    alert()->close();
    settle();
    EXPECT_TRUE(isQueued(first));
    EXPECT_FALSE(isQueued(second));
    EXPECT_FALSE(state->pendingPassConflict->has_value());
}

TEST_F(PassQueueViewTest, ReturnInTheAlertKeepsTheExistingPass) {
    raiseConflict();
    QTest::keyClick(alert(), Qt::Key_Return);
    settle();
    EXPECT_TRUE(isQueued(first));
    EXPECT_FALSE(isQueued(second));
}

TEST_F(PassQueueViewTest, AConflictThatIsGoneTakesItsAlertAlong) {
    raiseConflict();
    state->resolveConflictKeepExisting();
    settle();
    QTest::qWait(0);
    EXPECT_FALSE(alert());
    EXPECT_TRUE(isQueued(first));
}

}  // namespace
}  // namespace veloran::test
