// The settings on the screen of a small notebook, with a window manager's frame around them.

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "scenarios/real_station.h"
#include "scenarios/virtual_desktop.h"

namespace veloran {
namespace {

using test::spinUntil;

TEST(LowScreen, SettingsFitWithTheirFrameAndScrollToWhatIsOpened) {
    const QRect screen(0, 0, 1366, 768);
    const QString pictures = VELORAN_BINARY_DIR "/story";
    QDir().mkpath(pictures);
    const QTemporaryDir home;
    test::SampleServices services;
    test::VirtualDesktop desktop(screen.size());
    ASSERT_TRUE(desktop.isUp());
    test::DrivenProgram program(
        desktop, VELORAN_DRIVEN,
        QStringList{home.path(), QString::fromStdString(services.server().base())}, pictures);
    ASSERT_TRUE(program.waitForText("status", "[0-9]+ passes in next 24h"));

    program.press("ctrl+comma");
    ASSERT_TRUE(program.waitFor("settings"));
    ASSERT_TRUE(spinUntil([&] {
        return program.frame("settings").height() > program.edge("settings").height();
    })) << "it gets a frame";
    const QRect frame = program.frame("settings");
    EXPECT_TRUE(screen.contains(frame))
        << frame.x() << ' ' << frame.y() << ' ' << frame.width() << ' ' << frame.height();
    EXPECT_GT(frame.height(), 720) << "as high as there is room";
    EXPECT_TRUE(program.isInSight("applyButton"));

    program.click("customSources>disclosureHeading");
    EXPECT_TRUE(spinUntil([&] { return program.isInSight("newSourceURL"); }));
    program.picture("low-screen");
    program.press("ctrl+comma");
    EXPECT_TRUE(program.waitFor("settings", false));
}

}  // namespace
}  // namespace veloran
