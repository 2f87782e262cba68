#include <gmock/gmock.h>

#include <QApplication>
#include <clocale>
#include <ctime>

#include "ui/theme.h"

// Widgets need an application, a platform without a screen, and one time zone for every machine.
int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    tzset();
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    veloran::Theme::apply(true);
    return RUN_ALL_TESTS();
}
