#include "ui/widgets/value_label.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QToolTip>

namespace veloran {
namespace {

TEST(ValueLabel, TextWithinTheReservedWidthLaysNothingOutAnew) {
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    auto* label = new ValueLabel({14});
    label->reserve("+00000 Hz");
    row->addWidget(label);
    window.show();
    QApplication::processEvents();
    const int width = label->sizeHint().width();
    label->setText(QString("+1 Hz"));
    EXPECT_EQ(label->sizeHint().width(), width);
    label->setText(QString("-1234567890 Hz"));
    EXPECT_GT(label->sizeHint().width(), width) << "a wider text gets its room";
    label->setText(QString("0 Hz"));
    EXPECT_EQ(label->sizeHint().width(), width) << "as long as it needs it";
}

TEST(ValueLabel, FixedValueKeepsItsWidthWhateverItShows) {
    ValueLabel label({15});
    label.setWidthRange(56, 100);
    label.setText(QString("+123456789012345 Hz"));
    EXPECT_EQ(label.sizeHint().width(), 100);
    EXPECT_EQ(label.minimumWidth(), 56);
    EXPECT_EQ(label.maximumWidth(), 100);
}

TEST(ValueLabel, ScreenReaderHearsNameAndText) {
    ValueLabel label({15}, "45.0°");
    const auto name = [&] {
        return QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name);
    };
    EXPECT_EQ(name(), "45.0°");
    label.setAccessibleName("El");
    EXPECT_EQ(name(), "El 45.0°");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&label)->role(), QAccessible::StaticText);
}

TEST(ValueLabel, TextTooWideForItsPlaceIsNotCutOffAtTheEdge) {
    ValueLabel label({15}, "-12000 Hz");
    label.resize(60, 20);
    const QImage image = label.grab().toImage();
    const QRgb background = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        EXPECT_EQ(image.pixel(image.width() - 1, y), background) << "row " << y;
    }
}

TEST(ValueLabel, TooltipTellsAllOfATextThatIsCutAndOnlyThen) {
    ValueLabel label({15}, "RS-44 & <b>friends</b> of the transponder");
    label.show();
    const auto tip = [&](int width) {
        label.resize(width, 20);
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
        const bool shown = QApplication::sendEvent(&label, &event) && event.isAccepted();
        return shown ? QToolTip::text() : QString();
    };
    EXPECT_EQ(tip(60), "<p>RS-44 &amp; &lt;b&gt;friends&lt;/b&gt; of the transponder</p>");
    EXPECT_EQ(tip(1000), "");
}

}  // namespace
}  // namespace veloran
