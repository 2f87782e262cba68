// An evening on which nobody sits at the program: its window is closed, it is started once more, it
// is killed, its desktop ends; on a screen and a bus of its own.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "desktop/fake_desktop.h"
#include "desktop/private_bus.h"
#include "scenarios/real_station.h"
#include "scenarios/virtual_desktop.h"

namespace veloran {
namespace {

using test::DrivenProgram;
using test::spinUntil;

class UnattendedStory : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(bus.isUp()) << "dbus-daemon is missing";
        ASSERT_TRUE(desktop.isUp());
        desktop.useBus(bus.address());
        QDir().mkpath(kPictures);
        portal = std::make_unique<test::FakePortal>(bus.connect("portal"));
        notifications = std::make_unique<test::FakeNotifications>(bus.connect("notifications"));
        tray = std::make_unique<test::FakeTray>(bus.connect("tray"));
        portal->serve();
        notifications->serve();
        // A radio that is not there.
        QFile settings(home.filePath("settings.json"));
        ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
        settings.write(
            QString(R"({"rigHost": "127.0.0.1", "rigPort": %1})").arg(test::freePort()).toUtf8());
    }
    std::unique_ptr<DrivenProgram> start() {
        return std::make_unique<DrivenProgram>(
            desktop, VELORAN_DRIVEN,
            QStringList{home.path(), QString::fromStdString(services.server().base())}, kPictures);
    }
    void queueAPass(DrivenProgram& program) {
        ASSERT_TRUE(program.waitForText("status", "[0-9]+ passes in next 24h"));
        program.clickAt("passList", 0.5, 0.8);
        for (int i = 0; i < 3; ++i) program.press("Down");  // past what is under way
        program.press("q");
        ASSERT_TRUE(program.waitFor("queuedBadge"));
    }
    void close(DrivenProgram& program) {
        program.press("alt+F4");
        ASSERT_TRUE(program.waitFor("mainWindow", false));
    }
    void waitForWindow(DrivenProgram& program) {
        ASSERT_TRUE(program.waitFor("mainWindow"));
        ASSERT_TRUE(program.waitForFocus("passList"));
    }
    bool isAwake(bool awake) {
        return spinUntil([&] { return portal->held.isEmpty() != awake; });
    }

    const QString kPictures = VELORAN_BINARY_DIR "/story";
    QTemporaryDir home;
    test::SampleServices services;
    test::PrivateBus bus;
    test::VirtualDesktop desktop{QSize(1300, 900)};
    std::unique_ptr<test::FakePortal> portal;
    std::unique_ptr<test::FakeNotifications> notifications;
    std::unique_ptr<test::FakeTray> tray;
};

TEST_F(UnattendedStory, ClosedWithAQueueItGoesOnInTheTrayUntilItIsAskedToQuit) {
    tray->serve();
    const auto program = start();
    queueAPass(*program);
    ASSERT_TRUE(isAwake(true));
    EXPECT_TRUE(portal->reasons.front().startsWith("Waiting for the pass of "))
        << portal->reasons.front().toStdString();
    EXPECT_TRUE(tray->symbol().isEmpty()) << "not while there is a window";

    close(*program);
    ASSERT_TRUE(spinUntil([&] { return !tray->symbol().isEmpty(); }));
    ASSERT_TRUE(spinUntil([&] { return notifications->notices.size() == 1; }));
    EXPECT_TRUE(notifications->notices[0].title.startsWith("Veloran goes on: Next pass: "))
        << notifications->notices[0].title.toStdString();
    const QStringList menu = tray->menuTexts();
    ASSERT_EQ(menu.size(), 4) << menu.join(" | ").toStdString();
    EXPECT_TRUE(menu[0].startsWith("Next pass: "));
    EXPECT_EQ(menu.mid(1), (QStringList{"Show", "Stop", "Quit"}));
    EXPECT_FALSE(tray->choose("Stop")) << "no session runs";
    EXPECT_FALSE(portal->held.isEmpty());

    ASSERT_TRUE(tray->choose("Show"));
    waitForWindow(*program);
    EXPECT_TRUE(spinUntil([&] { return tray->symbol().isEmpty(); }));
    EXPECT_TRUE(spinUntil([&] { return notifications->closed.size() == 1; }));

    close(*program);
    ASSERT_TRUE(spinUntil([&] { return !tray->symbol().isEmpty(); }));
    ASSERT_TRUE(tray->choose("Quit"));
    ASSERT_TRUE(program->waitFor("quitQuestion"));
    program->click("questionAct");
    EXPECT_EQ(program->ended(), 0);
    EXPECT_TRUE(isAwake(false)) << "and the machine may sleep";
}

TEST_F(UnattendedStory, WithoutATrayASecondStartBringsTheWindowForward) {
    const auto program = start();
    queueAPass(*program);
    close(*program);
    ASSERT_TRUE(spinUntil([&] { return notifications->notices.size() == 1; }));
    EXPECT_TRUE(notifications->notices[0].text.startsWith("Start Veloran again"));

    const auto second = start();
    EXPECT_EQ(second->ended(), 0);
    waitForWindow(*program);
    EXPECT_TRUE(program->isThere("queuedBadge")) << "it is the one that was there";

    program->press("ctrl+q");
    ASSERT_TRUE(program->waitFor("quitQuestion"));
    program->picture("quit-question");
    program->press("Escape");
    ASSERT_TRUE(program->waitFor("quitQuestion", false));
    ASSERT_TRUE(program->waitForFocus("passList"));
    program->press("ctrl+q");
    ASSERT_TRUE(program->waitFor("quitQuestion"));
    program->click("questionAct");
    EXPECT_EQ(program->ended(), 0);
}

TEST_F(UnattendedStory, AskedToEndByTheDesktopItEndsAtOnceAndSaysNothing) {
    const auto program = start();
    queueAPass(*program);
    program->terminate();
    EXPECT_EQ(program->ended(), 0);
    EXPECT_TRUE(notifications->notices.empty());
    EXPECT_TRUE(isAwake(false));
}

TEST_F(UnattendedStory, WhatAKilledOneLeftStopsNobody) {
    const auto killed = start();
    ASSERT_TRUE(killed->waitFor("mainWindow"));
    killed->kill();
    EXPECT_EQ(killed->ended(), -1);

    const auto program = start();
    ASSERT_TRUE(program->waitFor("mainWindow"));
    const auto second = start();
    EXPECT_EQ(second->ended(), 0) << "and the new one is called by later ones";
    program->terminate();
    EXPECT_EQ(program->ended(), 0);
}

}  // namespace
}  // namespace veloran
