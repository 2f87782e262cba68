#include "qt/disk_files.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <atomic>
#include <fstream>
#include <thread>

namespace veloran {
namespace {

using ::testing::Optional;

class DiskFilesTest : public ::testing::Test {
  protected:
    std::filesystem::path at(const std::string& name) const { return home / name; }
    int entriesOfHome() const {
        const std::filesystem::directory_iterator all(home);
        return static_cast<int>(std::distance(begin(all), end(all)));
    }

    QTemporaryDir directory;
    std::filesystem::path home = directory.path().toStdString();
    DiskFiles files{home};
};

TEST_F(DiskFilesTest, TheHomeIsTheOneHandedIn) {
    EXPECT_EQ(files.homeDirectory(), home);
}

TEST_F(DiskFilesTest, AnyBytesComeBackAsWritten) {
    const std::string bytes("a\r\n\0\xff\x80z", 7);
    EXPECT_TRUE(files.writeAtomically(at("file"), bytes));
    EXPECT_THAT(files.read(at("file")), Optional(bytes));
    EXPECT_TRUE(files.writeAtomically(at("file"), ""));
    EXPECT_THAT(files.read(at("file")), Optional(std::string()));
}

TEST_F(DiskFilesTest, AWriteMakesMissingDirectoriesAndLeavesNothingBeside) {
    EXPECT_TRUE(files.writeAtomically(at("Спутники/tle/amateur.tle"), "one"));
    EXPECT_TRUE(files.writeAtomically(at("Спутники/tle/amateur.tle"), "two"));
    EXPECT_THAT(files.read(at("Спутники/tle/amateur.tle")), Optional(std::string("two")));
    EXPECT_EQ(entriesOfHome(), 1);
}

TEST_F(DiskFilesTest, WhatIsMissingOrNoFileReadsAsAbsent) {
    EXPECT_EQ(files.read(at("missing")), std::nullopt);
    EXPECT_EQ(files.read(home), std::nullopt);
    EXPECT_EQ(files.read(""), std::nullopt);
    EXPECT_EQ(files.read(at(std::string(5000, 'x'))), std::nullopt);
    ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(files.read(at("pipe")), std::nullopt);
}

TEST_F(DiskFilesTest, AFileBeyondTheLimitReadsAsAbsent) {
    ASSERT_TRUE(files.writeAtomically(at("large"), "x"));
    std::filesystem::resize_file(at("large"), FileStore::kLargestFile + 1);
    EXPECT_EQ(files.read(at("large")), std::nullopt);
}

TEST_F(DiskFilesTest, AWriteThatCannotBeDoneSaysSoAndLeavesWhatWasThere) {
    ASSERT_TRUE(files.writeAtomically(at("file"), "old"));
    EXPECT_FALSE(files.writeAtomically(at("file/below"), "new"));
    EXPECT_THAT(files.read(at("file")), Optional(std::string("old")));
    std::filesystem::create_directory(at("directory"));
    EXPECT_FALSE(files.writeAtomically(at("directory"), "new"));
    EXPECT_TRUE(std::filesystem::is_directory(at("directory")));
    EXPECT_FALSE(files.writeAtomically("", "new"));
    EXPECT_EQ(entriesOfHome(), 2);
}

TEST_F(DiskFilesTest, ALinkStaysALink) {
    ASSERT_TRUE(files.writeAtomically(at("target"), "old"));
    std::filesystem::create_symlink(at("target"), at("link"));
    EXPECT_TRUE(files.writeAtomically(at("link"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(at("link")));
    EXPECT_THAT(files.read(at("target")), Optional(std::string("new")));
}

TEST_F(DiskFilesTest, RemovingTellsWhetherThereWasAFile) {
    ASSERT_TRUE(files.writeAtomically(at("file"), "x"));
    EXPECT_TRUE(files.remove(at("file")));
    EXPECT_FALSE(files.remove(at("file")));
    EXPECT_FALSE(files.remove(home));
}

TEST_F(DiskFilesTest, PuttingAsideRenamesWhateverStandsThere) {
    EXPECT_EQ(files.putAside(at("file")), PutAside::nothingThere);
    for (const char* content : {"first", "second"}) {
        ASSERT_TRUE(files.writeAtomically(at("file"), content));
        EXPECT_EQ(files.putAside(at("file")), PutAside::moved);
        EXPECT_FALSE(std::filesystem::exists(at("file")));
        EXPECT_THAT(files.read(at("file.unreadable")), Optional(std::string(content)));
    }
    std::filesystem::create_directory(at("directory"));
    EXPECT_EQ(files.putAside(at("directory")), PutAside::moved);
    EXPECT_TRUE(std::filesystem::is_directory(at("directory.unreadable")));
    std::filesystem::create_directories(at("taken.unreadable/full"));
    ASSERT_TRUE(files.writeAtomically(at("taken"), "x"));
    EXPECT_EQ(files.putAside(at("taken")), PutAside::failed);
    EXPECT_TRUE(std::filesystem::exists(at("taken")));
}

TEST_F(DiskFilesTest, WhatIsPrivateIsTheUsersAloneAlsoWhereItReplacesAWiderFile) {
    const auto mode = [](const std::filesystem::path& path) {
        return std::filesystem::status(path).permissions();
    };
    constexpr auto kUserAlone =
        std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    EXPECT_TRUE(files.writePrivately(at("new"), "x"));
    EXPECT_EQ(mode(at("new")), kUserAlone);
    ASSERT_TRUE(files.writeAtomically(at("old"), "x"));
    std::filesystem::permissions(at("old"), std::filesystem::perms{0666});
    EXPECT_TRUE(files.writePrivately(at("old"), "y"));
    EXPECT_EQ(mode(at("old")), kUserAlone);
    EXPECT_THAT(files.read(at("old")), Optional(std::string("y")));
    EXPECT_TRUE(files.writeAtomically(at("old"), "z"));
    EXPECT_EQ(mode(at("old")), kUserAlone) << "a replacement keeps what was there";
}

TEST_F(DiskFilesTest, AReaderSeesTheOldOrTheNewContentButNoMixture) {
    constexpr std::size_t kSize = 300'000;
    ASSERT_TRUE(files.writeAtomically(at("file"), std::string(kSize, 'a')));
    std::atomic<bool> stop = false;
    std::thread writer([&] {
        for (int i = 0; !stop; ++i) {
            files.writeAtomically(at("file"), std::string(kSize, i % 2 ? 'a' : 'b'));
        }
    });
    for (int i = 0; i < 200; ++i) {
        const auto content = files.read(at("file"));
        EXPECT_TRUE(content && content->size() == kSize &&
                    content->find_first_not_of(content->front()) == std::string::npos)
            << "read " << i;
    }
    stop = true;
    writer.join();
}

}  // namespace
}  // namespace veloran
