#include "servers/log_file.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <string>

namespace veloran {
namespace {

class LogFileTest : public testing::Test {
  protected:
    QByteArray content(const QString& suffix = "") const {
        QFile file(name + suffix);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    qint64 size() const { return QFileInfo(name).size() + QFileInfo(name + ".1").size(); }
    void put(const QString& suffix, const QByteArray& text) const {
        QFile file(name + suffix);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir home;
    const QString name = home.filePath("radio.log");
};

TEST(LogFileRule, ANewFileBeginsBeforeTheLineThatWouldFillMoreThanHalf) {
    EXPECT_FALSE(startsNewLogFile(0, 10, 100));
    EXPECT_FALSE(startsNewLogFile(40, 10, 100));
    EXPECT_TRUE(startsNewLogFile(41, 10, 100));
    EXPECT_TRUE(startsNewLogFile(50, 1, 100));
    EXPECT_FALSE(startsNewLogFile(0, 1000, 100)) << "an empty file would be put aside for nothing";
    EXPECT_TRUE(startsNewLogFile(1000, 1, 100));
}

TEST_F(LogFileTest, KeepsTheLatestLinesInTwoFiles) {
    LogFile log(name, 20);
    ASSERT_TRUE(log.open());
    for (const char* line : {"1234", "5678"}) log.write(line);
    EXPECT_EQ(content(), "1234\n5678\n");
    EXPECT_EQ(content(".1"), "none");
    log.write("9");
    EXPECT_EQ(content(), "9\n");
    EXPECT_EQ(content(".1"), "1234\n5678\n");
    log.write("abcdefgh");
    EXPECT_EQ(content(), "abcdefgh\n");
    EXPECT_EQ(content(".1"), "9\n");
}

TEST_F(LogFileTest, AWeekOfLinesStaysWithinItsBytes) {
    constexpr qint64 kMost = 10'000;
    LogFile log(name, kMost);
    ASSERT_TRUE(log.open());
    for (int i = 0; i < 5'000; ++i) {
        log.write(std::string(static_cast<std::size_t>(i % 61), 'x'));
        ASSERT_LE(size(), kMost) << "line " << i;
    }
    EXPECT_GT(size(), kMost / 2);
}

TEST_F(LogFileTest, BeginsWithoutWhatAnEarlierRunLeft) {
    put("", "old\n");
    put(".1", "older\n");
    LogFile log(name);
    ASSERT_TRUE(log.open());
    log.write("new");
    EXPECT_EQ(content(), "new\n");
    EXPECT_EQ(content(".1"), "none");
}

TEST_F(LogFileTest, WithoutAFileLinesGoNowhere) {
    LogFile log(home.filePath("no/such/folder"));
    EXPECT_FALSE(log.open());
    EXPECT_FALSE(log.isOpen());
    log.write("line");
}

}  // namespace
}  // namespace veloran
