#include "qt/disk_settings.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <cmath>
#include <optional>

#include "qt/disk_files.h"
#include "qt/qt_main_loop.h"
#include "qt/spin.h"

namespace veloran {
namespace {

using test::spinUntil;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

/// The real loop, counting: the store posts once to begin a write and once when it is done.
class CountingLoop final : public MainLoop {
  public:
    void post(Task task) override {
        loop_.post([this, task = std::move(task)] {
            task();
            ++ran;
        });
    }
    void after(double seconds, Task task) override { loop_.after(seconds, std::move(task)); }
    std::unique_ptr<Timer> every(double seconds, Task task) override {
        return loop_.every(seconds, std::move(task));
    }
    int ran = 0;

  private:
    QtMainLoop loop_;
};

class DiskSettingsTest : public ::testing::Test {
  protected:
    std::optional<std::string> content() const { return files.read(file); }
    void place(std::string_view text) { ASSERT_TRUE(files.writeAtomically(file, text)); }

    QTemporaryDir directory;
    std::filesystem::path home = directory.path().toStdString();
    std::filesystem::path file = home / "veloran" / "settings.json";
    std::filesystem::path aside = home / "veloran" / "settings.json.unreadable";
    DiskFiles files{home};
    CountingLoop loop;
};

TEST_F(DiskSettingsTest, AFirstStartIsEmptyAndWritesNothing) {
    { EXPECT_THAT(DiskSettings(file, loop).keys(), IsEmpty()); }
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(DiskSettingsTest, AValueIsThereAtOnceAndReachesTheDiskByItself) {
    DiskSettings settings(file, loop);
    settings.set("rigPort", std::int64_t{4533});
    EXPECT_EQ(settings.integer("rigPort"), 4533);
    EXPECT_EQ(content(), std::nullopt);
    ASSERT_TRUE(spinUntil([&] { return loop.ran == 2; }));
    EXPECT_THAT(content(), Optional(std::string("{\n  \"rigPort\": 4533\n}\n")));
}

TEST_F(DiskSettingsTest, TheEndWritesWhatIsLeft) {
    {
        DiskSettings settings(file, loop);
        settings.set("obsAlt", 10.0);
        settings.set("gone", true);
        settings.remove("gone");
    }
    const DiskSettings settings(file, loop);
    EXPECT_THAT(settings.keys(), ElementsAre("obsAlt"));
    EXPECT_EQ(settings.value("obsAlt"), SettingValue(10.0));
}

TEST_F(DiskSettingsTest, ABurstOfChangesIsOneWrite) {
    DiskSettings settings(file, loop);
    for (std::int64_t i = 0; i <= 1000; ++i) settings.set("counter", i);
    ASSERT_TRUE(spinUntil([&] { return content().has_value(); }));
    test::spinFor(20);
    EXPECT_EQ(loop.ran, 2);
    EXPECT_THAT(content(), Optional(std::string("{\n  \"counter\": 1000\n}\n")));
}

TEST_F(DiskSettingsTest, AChangeDuringAWriteIsWrittenAfterIt) {
    DiskSettings settings(file, loop);
    settings.set("counter", std::int64_t{1});
    ASSERT_TRUE(spinUntil([&] { return loop.ran == 1; }));
    settings.set("counter", std::int64_t{2});
    ASSERT_TRUE(spinUntil([&] { return content() == "{\n  \"counter\": 2\n}\n"; }));
}

TEST_F(DiskSettingsTest, TwoProgramsKeepEachOthersKeys) {
    place(R"({"both": 0, "old": 1})");
    {
        DiskSettings first(file, loop);
        DiskSettings second(file, loop);
        first.set("first", true);
        first.set("both", std::int64_t{1});
        second.set("second", true);
        second.remove("old");
        ASSERT_TRUE(spinUntil([&] { return loop.ran == 4; }));
        second.set("both", std::int64_t{2});
    }
    const DiskSettings settings(file, loop);
    EXPECT_THAT(settings.keys(), ElementsAre("both", "first", "second"));
    EXPECT_EQ(settings.integer("both"), 2);
}

TEST_F(DiskSettingsTest, AnUnreadableFileIsKeptBesideWhenItIsReplaced) {
    const std::string binary("\x7f\0ELF\xff", 6);
    place(binary);
    {
        DiskSettings settings(file, loop);
        EXPECT_THAT(settings.keys(), IsEmpty());
        settings.set("a", true);
    }
    EXPECT_THAT(content(), Optional(std::string("{\n  \"a\": true\n}\n")));
    EXPECT_THAT(files.read(aside), Optional(binary));
}

TEST_F(DiskSettingsTest, AFileBeyondAllReasonIsKeptBesideToo) {
    place("{}");
    std::filesystem::resize_file(file, FileStore::kLargestFile + 1);
    { DiskSettings(file, loop).set("a", true); }
    EXPECT_THAT(content(), Optional(std::string("{\n  \"a\": true\n}\n")));
    EXPECT_EQ(std::filesystem::file_size(aside), FileStore::kLargestFile + 1);
}

TEST_F(DiskSettingsTest, AnUnreadableFileThatNobodyReplacesStaysInPlace) {
    place("no JSON");
    { const DiskSettings settings(file, loop); }
    EXPECT_THAT(content(), Optional(std::string("no JSON")));
}

TEST_F(DiskSettingsTest, AFileThatVanishesIsWrittenWhole) {
    place(R"({"a": 1})");
    DiskSettings settings(file, loop);
    ASSERT_TRUE(files.remove(file));
    settings.set("b", std::int64_t{2});
    ASSERT_TRUE(spinUntil([&] { return loop.ran == 2; }));
    EXPECT_THAT(content(), Optional(std::string("{\n  \"a\": 1,\n  \"b\": 2\n}\n")));
}

TEST_F(DiskSettingsTest, AFailedWriteIsTriedAgainWithTheNext) {
    ASSERT_TRUE(files.writeAtomically(home / "veloran", "a file where the directory belongs"));
    DiskSettings settings(file, loop);
    settings.set("a", std::int64_t{1});
    settings.set("b", std::int64_t{1});
    ASSERT_TRUE(spinUntil([&] { return loop.ran == 2; }));
    ASSERT_TRUE(files.remove(home / "veloran"));
    settings.set("b", std::int64_t{2});
    ASSERT_TRUE(spinUntil([&] { return loop.ran == 4; }));
    EXPECT_THAT(content(), Optional(std::string("{\n  \"a\": 1,\n  \"b\": 2\n}\n")));
}

TEST_F(DiskSettingsTest, TheFileIsForTheUserAlone) {
    const auto mode = [this] { return std::filesystem::status(file).permissions(); };
    constexpr auto kUserAlone =
        std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    { DiskSettings(file, loop).set("a", true); }
    EXPECT_EQ(mode(), kUserAlone);
    // One of an earlier time, which the program only reads.
    std::filesystem::permissions(file, std::filesystem::perms{0644});
    { EXPECT_TRUE(DiskSettings(file, loop).flag("a")); }
    EXPECT_EQ(mode(), kUserAlone);
    {
        DiskSettings settings(file, loop);
        std::filesystem::permissions(file, std::filesystem::perms{0666});
        settings.set("a", false);
    }
    EXPECT_EQ(mode(), kUserAlone);
}

TEST_F(DiskSettingsTest, ANumberThatIsNotFiniteIsKeptInMemoryAndLeftOutOfTheFile) {
    place(R"({"a": 1.5})");
    {
        DiskSettings settings(file, loop);
        settings.set("a", std::nan(""));
        EXPECT_TRUE(settings.contains("a"));
        EXPECT_EQ(settings.number("a"), 0);
    }
    EXPECT_THAT(content(), Optional(std::string("{\n}\n")));
}

}  // namespace
}  // namespace veloran
