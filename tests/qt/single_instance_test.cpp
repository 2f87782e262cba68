#include "qt/single_instance.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>

#include "qt/spin.h"

namespace veloran {
namespace {

using Role = SingleInstance::Role;
using test::spinUntil;

class SingleInstanceTest : public ::testing::Test {
  protected:
    std::unique_ptr<SingleInstance> start(const QString& name = "one", int patienceMs = 10'000) {
        return std::make_unique<SingleInstance>(name, directory.path(), patienceMs);
    }
    QString file(const QString& name) { return directory.filePath(name); }

    /// What a process leaves that is killed.
    static void leaveSocket(const QString& path) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path);
        ASSERT_LT(static_cast<std::size_t>(name.size()), sizeof(address.sun_path));
        std::ranges::copy(name, address.sun_path);
        const int number = socket(AF_UNIX, SOCK_STREAM, 0);
        const void* untyped = &address;
        ASSERT_EQ(bind(number, static_cast<const sockaddr*>(untyped), sizeof(address)), 0);
        ASSERT_EQ(listen(number, 1), 0);
        close(number);
        ASSERT_TRUE(QFile::exists(path));
    }

    QTemporaryDir directory;
};

// A second start waits for its answer, so it needs a thread beside the first one's loop.
TEST_F(SingleInstanceTest, ASecondStartCallsTheFirst) {
    const auto first = start();
    ASSERT_EQ(first->role(), Role::first);
    int calls = 0;
    QByteArray token;
    QObject::connect(first.get(), &SingleInstance::called, [&](const QByteArray& given) {
        ++calls;
        token = given;
    });
    qputenv("XDG_ACTIVATION_TOKEN", "leave-7");
    for (int starts = 1; starts <= 3; ++starts) {
        std::atomic<int> role = -1;
        std::thread second([&] { role = static_cast<int>(start()->role()); });
        EXPECT_TRUE(spinUntil([&] { return role >= 0; }));
        second.join();
        EXPECT_EQ(role, static_cast<int>(Role::second));
        EXPECT_EQ(calls, starts);
    }
    qunsetenv("XDG_ACTIVATION_TOKEN");
    EXPECT_EQ(token, "leave-7");
}

TEST_F(SingleInstanceTest, ProgramsOfOtherNamesAreFirstsToo) {
    const auto program = start("one");
    const auto demo = start("two");
    EXPECT_EQ(program->role(), Role::first);
    EXPECT_EQ(demo->role(), Role::first);
}

TEST_F(SingleInstanceTest, AfterItsEndTheNextOneIsFirst) {
    start().reset();
    EXPECT_EQ(start()->role(), Role::first);
}

TEST_F(SingleInstanceTest, WhatADeadOneLeftIsTakenOver) {
    leaveSocket(file("one.socket"));
    QFile lock(file("one.lock"));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    const auto next = start();
    ASSERT_EQ(next->role(), Role::first);
    QLocalSocket caller;
    caller.connectToServer(file("one.socket"));
    EXPECT_TRUE(spinUntil([&] { return caller.state() == QLocalSocket::ConnectedState; }));
}

TEST_F(SingleInstanceTest, OneThatDoesNotAnswerIsNotJoined) {
    const auto first = start();
    QFile::remove(file("one.socket"));
    EXPECT_EQ(start("one", 0)->role(), Role::unanswered);
}

TEST_F(SingleInstanceTest, ACallerThatSaysTooMuchOrNothingIsLetGo) {
    const auto first = start();
    int calls = 0;
    QObject::connect(first.get(), &SingleInstance::called, [&] { ++calls; });
    QLocalSocket silent;
    silent.connectToServer(file("one.socket"));
    QLocalSocket loud;
    loud.connectToServer(file("one.socket"));
    ASSERT_TRUE(spinUntil([&] { return loud.state() == QLocalSocket::ConnectedState; }));
    loud.write(QByteArray(100'000, 'x'));
    EXPECT_TRUE(spinUntil([&] { return loud.state() == QLocalSocket::UnconnectedState; }));
    EXPECT_EQ(calls, 0);
}

TEST_F(SingleInstanceTest, SocketAndLockAreTheUsersAlone) {
    const auto first = start();
    for (const char* name : {"one.socket", "one.lock"}) {
        struct stat about {};
        ASSERT_EQ(stat(QFile::encodeName(file(name)).constData(), &about), 0) << name;
        EXPECT_EQ(about.st_mode & 077, 0U) << name;
    }
}

TEST_F(SingleInstanceTest, WithoutADirectoryForItEveryoneIsFirst) {
    for (const QString& nowhere : {file("absent"), QString()}) {
        const SingleInstance one("one", nowhere);
        const SingleInstance other("one", nowhere);
        EXPECT_EQ(one.role(), Role::first);
        EXPECT_EQ(other.role(), Role::first);
    }
}

}  // namespace
}  // namespace veloran
