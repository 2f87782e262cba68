#include "ui/text_direction.h"

#include <QGuiApplication>
#include <QPushButton>

#include "ui/main_window.h"
#include "ui_fixture.h"

namespace veloran::test {
namespace {

class RightToLeftTest : public UiFixture {
  protected:
    void TearDown() override { QGuiApplication::setLayoutDirection(Qt::LeftToRight); }
    int xOf(const QWidget& window, const char* name) {
        return child<QWidget>(window, name).mapTo(&window, QPoint()).x();
    }
};

TEST_F(RightToLeftTest, WindowIsTheSameOnARightToLeftDesktop) {
    const auto placesOf = [this](Qt::LayoutDirection desktop) {
        QGuiApplication::setLayoutDirection(desktop);
        MainWindow window(state);
        window.resize(1200, 800);
        window.show();
        QTest::qWait(0);
        EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
        EXPECT_LT(xOf(window, "timeline"), xOf(window, "satelliteMap"));
        std::vector<std::pair<QString, QRect>> places;
        for (const QWidget* part : window.findChildren<QWidget*>()) {
            EXPECT_EQ(part->layoutDirection(), Qt::LeftToRight) << qPrintable(part->objectName());
            if (!part->isVisible() || part->objectName().isEmpty()) continue;
            places.emplace_back(part->objectName(),
                                QRect(part->mapTo(&window, QPoint()), part->size()));
        }
        return places;
    };
    placesOf(Qt::LeftToRight);  // begins the load, after which the title bar looks otherwise
    const auto usual = placesOf(Qt::LeftToRight);
    EXPECT_GT(usual.size(), 50u);
    EXPECT_EQ(placesOf(Qt::RightToLeft), usual);
}

TEST_F(RightToLeftTest, DesktopThatTurnsRoundTurnsNothing) {
    MainWindow window(state);
    window.resize(1200, 800);
    window.show();
    QTest::qWait(0);
    const int before = xOf(window, "rigEndpoint");
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    ASSERT_TRUE(QTest::qWaitFor(
        [] { return QGuiApplication::layoutDirection() == Qt::LeftToRight; }, kPatienceMs));
    QTest::qWait(0);
    EXPECT_EQ(xOf(window, "rigEndpoint"), before);
    EXPECT_EQ(child<QPushButton>(window, "ritMinus100").layoutDirection(), Qt::LeftToRight);
}

}  // namespace
}  // namespace veloran::test
