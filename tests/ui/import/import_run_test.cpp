#include "ui/import/import_run.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "../ui_fixture.h"

namespace veloran::test {
namespace {

class ElementFileTest : public ::testing::Test {
  protected:
    QString write(const QString& name, const QByteArray& content) {
        QFile file(directory.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QTemporaryDir directory;
};

TEST_F(ElementFileTest, TextIsReadAsItIs) {
    const ElementFile file = readElementFile(write("a.txt", "ÅSAT\r\n1 2\n"));
    EXPECT_EQ(file.error, std::nullopt);
    EXPECT_EQ(file.text, "ÅSAT\r\n1 2\n");
}

TEST_F(ElementFileTest, ByteOrderMarkIsNoPartOfTheText) {
    EXPECT_EQ(readElementFile(write("a.json", "\xEF\xBB\xBF[]")).text, "[]");
}

TEST_F(ElementFileTest, WhatIsNoUtf8FailsByName) {
    const ElementFile file = readElementFile(write("latin.txt",
                                                   "M\xFC"
                                                   "NCHEN"));
    EXPECT_EQ(file.error, "latin.txt: not UTF-8 text");
    EXPECT_EQ(file.text, "");
}

TEST_F(ElementFileTest, MissingFileTellsTheSystemsReason) {
    EXPECT_EQ(readElementFile(directory.filePath("none.txt")).error,
              "none.txt: No such file or directory");
}

TEST_F(ElementFileTest, DirectoryAndDeviceAreNotRead) {
    ASSERT_TRUE(QDir(directory.path()).mkdir("sub"));
    EXPECT_EQ(readElementFile(directory.filePath("sub")).error, "sub: not a regular file");
    EXPECT_EQ(readElementFile("/dev/zero").error, "zero: not a regular file");
}

TEST_F(ElementFileTest, FileBeyondTheMeasureIsRefused) {
    QFile file(write("huge.txt", ""));
    ASSERT_TRUE(file.resize(static_cast<qint64>(FileStore::kLargestFile) + 1));
    EXPECT_EQ(readElementFile(file.fileName()).error, "huge.txt: larger than 64 MB");
}

TEST_F(ElementFileTest, EmptyFileIsAnEmptyText) {
    const ElementFile file = readElementFile(write("empty.txt", ""));
    EXPECT_EQ(file.error, std::nullopt);
    EXPECT_EQ(file.text, "");
}

}  // namespace
}  // namespace veloran::test
