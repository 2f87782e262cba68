#include "ui/widgets/switch_button.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTest>

#include "ui/theme.h"

namespace veloran {
namespace {

TEST(SwitchButtonTest, TogglesByPointerAndKeyboard) {
    SwitchButton button;
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(button.isChecked());
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_FALSE(button.isChecked());
}

TEST(SwitchButtonTest, KnobStandsRightWhenOn) {
    const auto left = [](bool on) {
        QImage image(SwitchButton::pictureSize(), QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        SwitchButton::paintPicture(painter, image.rect(), on, true);
        return image.pixelColor(image.height() / 2, image.height() / 2);
    };
    EXPECT_EQ(left(false), QColor(Qt::white));
    EXPECT_EQ(left(true), Theme::color(Ink::green));
}

}  // namespace
}  // namespace veloran
