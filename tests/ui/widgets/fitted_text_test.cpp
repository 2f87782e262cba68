#include "ui/widgets/fitted_text.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "ui/theme.h"
#include "ui/widgets/value_label.h"

namespace veloran {
namespace {

TEST(FittedText, NothingIsReadOfATextWithoutEnd) {
    EXPECT_EQ(readable("ISS"), "ISS");
    EXPECT_EQ(readable(QString(2000, 'N')), QString(2000, 'N'));
    EXPECT_EQ(readable(QString(5'000'000, 'N')), QString(2000, 'N') + QChar(0x2026));
    EXPECT_LE(plainToolTip(QString(5'000'000, '<')).size(), 5 * 2000);
}

TEST(FittedText, LabelOfATextWithoutEndMeasuresWhatIsRead) {
    ValueLabel label({12});
    label.setText(QString(3000, 'N'));
    const QSize hint = label.sizeHint();
    label.setText(QString(5'000'000, 'N'));
    EXPECT_EQ(label.sizeHint(), hint);
}

TEST(FittedText, TooltipShowsMarkupAsItIsWritten) {
    EXPECT_EQ(plainToolTip("<b>ISS</b> & co"), "<p>&lt;b&gt;ISS&lt;/b&gt; &amp; co</p>");
    EXPECT_EQ(plainToolTip(""), "");
}

TEST(FittedText, TextIsCutFromOneStepTooNarrow) {
    const QFont font = Theme::face(12);
    const int width = QFontMetrics(font).horizontalAdvance("ISS (ZARYA)");
    EXPECT_FALSE(isCut(font, "ISS (ZARYA)", width));
    EXPECT_TRUE(isCut(font, "ISS (ZARYA)", width - 1));
}

TEST(TextStyle, FontHasTheFaceSizeAndWeight) {
    EXPECT_EQ(fontOf({10, QFont::Bold}), Theme::mono(10, QFont::Bold));
    EXPECT_EQ(fontOf({12, QFont::Normal, Ink::red, 1, false}), Theme::face(12));
    EXPECT_NE(fontOf({12}), Theme::face(12));
}

}  // namespace
}  // namespace veloran
