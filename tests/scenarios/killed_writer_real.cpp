// The program killed in the middle of its writes, as by a power cut or an impatient user.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>
#include <chrono>
#include <filesystem>
#include <random>
#include <set>
#include <thread>

#include "qt/disk_files.h"
#include "qt/settings_file.h"
#include "scenarios/written_files.h"

namespace veloran {
namespace {

using namespace std::chrono_literals;
using test::kSettingsName;
using test::WrittenFile;

constexpr int kKills = 100;
constexpr int kMostKills = 130;  // until each file has been met
constexpr std::chrono::microseconds kLatestKill = 30ms;

class KilledWriter : public testing::Test {
  protected:
    /// Starts a writer on the home and kills it `delay` after it has begun to write.
    void writeAndKillAfter(std::chrono::microseconds delay) {
        QProcess writer;
        writer.start(VELORAN_FILE_WRITER, {directory.path()});
        ASSERT_TRUE(writer.waitForReadyRead(120'000)) << "the writer has not begun";
        std::this_thread::sleep_for(delay);  // the moment is what is tried out here
        writer.kill();
        ASSERT_TRUE(writer.waitForFinished(120'000));
        ASSERT_EQ(writer.exitStatus(), QProcess::CrashExit) << "it ended before it was killed";
    }
    void expectWhole(const WrittenFile& file) {
        const auto content = files.read(home / file.name);
        if (!content) return;
        present.insert(file.name);
        EXPECT_TRUE(*content == file.first || *content == file.second)
            << file.name << " has " << content->size() << " bytes";
    }
    void expectWholeSettings() {
        const auto content = files.read(home / kSettingsName);
        if (!content) return;
        present.insert(kSettingsName);
        const auto settings = parseSettings(*content);
        ASSERT_TRUE(settings) << "settings of " << content->size() << " bytes";
        EXPECT_EQ(settings->at("one"), settings->at("two"));
    }
    std::size_t filesInHome() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home)) {
            count += entry.is_regular_file() ? 1 : 0;
        }
        return count;
    }

    QTemporaryDir directory;
    std::filesystem::path home = directory.path().toStdString();
    DiskFiles files{home};
    std::set<std::string> present;
};

TEST_F(KilledWriter, LeavesEachFileAbsentOrWhole) {
    const auto seed = std::random_device{}();
    fmt::print("seed {}\n", seed);
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::int64_t> microseconds(0, kLatestKill.count());
    const auto written = test::writtenFiles();
    const auto isEnough = [&](int kills) {
        return kills >= kMostKills || (kills >= kKills && present.size() > written.size());
    };
    for (int kill = 0; !isEnough(kill); ++kill) {
        std::chrono::microseconds delay(microseconds(random));
        // A lock of the settings that says nothing, left by a kill at its making, holds their next
        // writer up for a second.
        if (kill >= kKills) delay += 2s;
        SCOPED_TRACE(fmt::format("kill {} after {} us", kill, delay.count()));
        ASSERT_NO_FATAL_FAILURE(writeAndKillAfter(delay));
        for (const auto& file : written) expectWhole(file);
        expectWholeSettings();
    }
    EXPECT_EQ(present.size(), written.size() + 1) << "every file has been written at some time";
    fmt::print("{} files in the home for {} of the program\n", filesInHome(), present.size());
}

}  // namespace
}  // namespace veloran
