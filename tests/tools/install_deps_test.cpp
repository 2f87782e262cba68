#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace veloran {
namespace {

using ::testing::Contains;
using ::testing::Not;

/// A machine that has no package yet, with a package manager that only notes what it is told to
/// install.
class InstallDepsTest : public testing::Test {
  protected:
    void SetUp() override {
        addProgram("dpkg-query", "exit 1");
        addProgram("sudo", R"(exec "$@")");
        addProgram("apt-get", "echo \"$@\" >> '" + told + "'");
    }

    void addProgram(const QString& name, const QString& script) const {
        QFile program(home.filePath(name));
        ASSERT_TRUE(program.open(QIODevice::WriteOnly));
        program.write(("#!/bin/sh\n" + script + "\n").toUtf8());
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// The words of the last line that the package manager was told.
    QStringList install(const QStringList& needs) const {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PATH", home.path() + ":" + environment.value("PATH"));
        process.setProcessEnvironment(environment);
        process.start(VELORAN_SOURCE_DIR "/tools/install-deps", needs);
        EXPECT_TRUE(process.waitForFinished(120'000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        QFile file(told);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll()).trimmed().split('\n').last().split(' ');
    }

    QTemporaryDir home;
    const QString told = home.filePath("told");
};

// apt shows names that other packages only mention; they have no candidate.
TEST_F(InstallDepsTest, TheFirstNameWithACandidateIsTaken) {
    addProgram("apt-cache", R"(
case "$*" in
    *mentioned*) test "$1" = show || printf 'mentioned:\n  Installed: (none)\n  Candidate: (none)\n' ;;
    *unknown*)   test "$1" = policy ;;
    *)           printf 'some:\n  Installed: (none)\n  Candidate: 1.83\n' ;;
esac)");
    const auto words =
        install({"mentioned|unknown|first|second", "third|mentioned", "mentioned|unknown"});
    EXPECT_EQ(words.first(), "install");
    EXPECT_THAT(words, Contains("first"));
    EXPECT_THAT(words, Not(Contains("second")));
    EXPECT_THAT(words, Contains("third"));
    EXPECT_EQ(words.count("mentioned"), 1) << "what cannot be had is named by its first choice";
    EXPECT_THAT(words, Not(Contains("unknown")));
}

}  // namespace
}  // namespace veloran
