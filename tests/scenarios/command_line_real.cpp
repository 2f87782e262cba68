// What the programs say on a machine without a display, and without a plugin for one.

#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace veloran {
namespace {

struct Said {
    int exitCode = -1;
    QString output;
    QString errors;
};

Said run(const QString& program, const QStringList& arguments) {
    const QTemporaryDir home;
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.remove(name);
    }
    environment.insert("HOME", home.path());
    environment.insert("LC_ALL", "C.UTF-8");  // of others Qt may complain
    environment.insert("QT_QPA_PLATFORM_PLUGIN_PATH", home.path());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    const bool ended = process.waitForFinished(60000);
    EXPECT_TRUE(ended);
    if (!ended || process.exitStatus() != QProcess::NormalExit) return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

TEST(CommandLineWithoutDisplay, ProgramTellsHelpAndVersion) {
    const Said help = run(VELORAN_PROGRAM, {"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.output.startsWith("Usage: veloran")) << help.output.toStdString();
    EXPECT_EQ(help.errors, "");
    const Said version = run(VELORAN_PROGRAM, {"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.output.contains(QRegularExpression("^veloran \\d+\\.\\d+\\.\\d+\n$")))
        << version.output.toStdString();
}

TEST(CommandLineWithoutDisplay, DemoTellsHelp) {
    const Said help = run(VELORAN_DEMO, {"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.output.contains("--screenshot")) << help.output.toStdString();
    EXPECT_EQ(help.errors, "");
}

TEST(CommandLineWithoutDisplay, WhatIsNotKnownEndsWithTwo) {
    for (const char* program : {VELORAN_PROGRAM, VELORAN_DEMO}) {
        for (const char* argument : {"--nonsense", "file.txt"}) {
            const Said refusal = run(program, {argument});
            EXPECT_EQ(refusal.exitCode, 2) << program << ' ' << argument;
            EXPECT_TRUE(refusal.errors.contains("nonsense") || refusal.errors.contains("file.txt"))
                << refusal.errors.toStdString();
            EXPECT_EQ(refusal.output, "");
        }
    }
    EXPECT_EQ(run(VELORAN_DEMO, {"--rate", "fast"}).exitCode, 2);
}

}  // namespace
}  // namespace veloran
