#include "ui/widgets/one_line.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QSignalSpy>

namespace veloran {
namespace {

class OneLineTest : public ::testing::Test {
  protected:
    OneLineTest() { keepToOneLine(field); }

    void paste(const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        field.paste();
        QGuiApplication::clipboard()->clear();
    }

    QLineEdit field;
    QSignalSpy edited{&field, &QLineEdit::textEdited};
};

TEST_F(OneLineTest, LineEndsAndTabsOfAPasteAreDropped) {
    paste("\t25544\r\n");
    EXPECT_EQ(field.text(), "25544");
    ASSERT_FALSE(edited.isEmpty());
    EXPECT_EQ(edited.back()[0], "25544");
}

TEST_F(OneLineTest, TextAndItsBlanksStay) {
    paste(QString::fromUtf8(" Büro 2 – 日本 🛰 "));
    EXPECT_EQ(field.text(), QString::fromUtf8(" Büro 2 – 日本 🛰 "));
}

TEST_F(OneLineTest, CursorStaysBehindWhatWasPasted) {
    field.setText("ad");
    field.setCursorPosition(1);
    paste(QString("b\nc") + QChar(0x2028) + QChar(0));
    EXPECT_EQ(field.text(), "abcd");
    EXPECT_EQ(field.cursorPosition(), 3);
}

TEST_F(OneLineTest, AnyTextLeavesReturnItsEffect) {
    for (const char* text : {"", "x", "\n"}) {
        field.setText(text);
        EXPECT_TRUE(field.hasAcceptableInput());
    }
}

}  // namespace
}  // namespace veloran
