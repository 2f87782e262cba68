#include "ui/widgets/selectable_value.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMouseEvent>
#include <QTest>

namespace veloran {
namespace {

class SelectableValueTest : public testing::Test {
  protected:
    SelectableValueTest() { value.setValue("145.800.000"); }
    SelectableValue value{{24, QFont::Bold, Ink::green}, "000.000.000"};
};

TEST_F(SelectableValueTest, SelectionStaysWhileTheNumberChanges) {
    value.setSelection(4, 3);
    value.setValue("145.801.250");
    EXPECT_EQ(value.selectedText(), "801");
    EXPECT_EQ(value.selectionStart(), 4);
}

TEST_F(SelectableValueTest, AllStaysAllWhenTheTextGrows) {
    value.selectAll();
    value.setValue("1296.500.000");
    EXPECT_EQ(value.selectedText(), "1296.500.000");
}

TEST_F(SelectableValueTest, SelectionMadeBackwardsStays) {
    value.setSelection(7, -3);
    value.setValue("145.801.250");
    EXPECT_EQ(value.selectedText(), "801");
    EXPECT_EQ(value.cursorPosition(), 4);
}

TEST_F(SelectableValueTest, SelectionIsCutWhereTheTextEnds) {
    value.setSelection(4, 3);
    value.setValue("—");
    EXPECT_EQ(value.selectedText(), "");
}

TEST_F(SelectableValueTest, CursorStaysWhereTheNextSelectionBegins) {
    value.setCursorPosition(7);
    value.setValue("145.801.250");
    EXPECT_EQ(value.cursorPosition(), 7);
    value.cursorForward(true, 2);
    EXPECT_EQ(value.selectedText(), ".2");
    value.setCursorPosition(11);
    value.setValue("—");
    EXPECT_EQ(value.cursorPosition(), 1);
}

TEST_F(SelectableValueTest, DragGoesOnFromWhereItBegan) {
    value.show();
    const auto dragTo = [this](int position) {
        const QPointF at(value.fontMetrics().horizontalAdvance(value.text().left(position)) + 1,
                         value.height() / 2.0);
        QMouseEvent move(QEvent::MouseMove, at, value.mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&value, &move);
    };
    const QPoint seventh(value.fontMetrics().horizontalAdvance("145.800") + 1, value.height() / 2);
    QTest::mousePress(&value, Qt::LeftButton, {}, seventh);
    value.setValue("145.801.250");
    dragTo(5);
    EXPECT_EQ(value.selectedText(), "01");
    value.setValue("145.802.500");
    dragTo(4);
    EXPECT_EQ(value.selectedText(), "802");
    value.setValue("145.803.750");
    dragTo(9);
    EXPECT_EQ(value.selectedText(), ".7");
}

TEST_F(SelectableValueTest, KeyboardCopies) {
    value.show();
    value.setFocus();
    QTest::keyClick(&value, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&value, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "145.800.000");
}

TEST_F(SelectableValueTest, CannotBeEdited) {
    value.show();
    QTest::keyClicks(&value, "9");
    EXPECT_EQ(value.text(), "145.800.000");
}

TEST_F(SelectableValueTest, EveryDigitFits) {
    value.setValue("10489.750.123");
    EXPECT_GE(value.width(), value.fontMetrics().horizontalAdvance(value.text()));
}

}  // namespace
}  // namespace veloran
