#include "ui/sheet.h"

#include <gtest/gtest.h>

#include <QScreen>
#include <QTest>

namespace veloran {
namespace {

/// A sheet that wants more than any screen has.
class LargeSheet : public Sheet {
  public:
    using Sheet::Sheet;
    QSize sizeHint() const override { return {20000, 20000}; }
};

TEST(SheetTest, FitsTheScreenWithItsFrame) {
    for (const bool hasWindow : {true, false}) {
        QWidget window;
        window.resize(100, 100);
        if (hasWindow) {
            window.show();
            QTest::qWait(0);
        }
        auto* sheet = new LargeSheet("Large", &window);
        sheet->present();
        QTest::qWait(0);
        const QSize room = window.screen()->availableSize();
        EXPECT_GT(sheet->height(), room.height() - 100);
        EXPECT_LE(sheet->frameGeometry().height(), room.height());
        EXPECT_LE(sheet->frameGeometry().width(), room.width());
        if (!hasWindow) {
            EXPECT_LE(sheet->height(), room.height() - 40) << "a frame is still to come";
        }
    }
}

}  // namespace
}  // namespace veloran
