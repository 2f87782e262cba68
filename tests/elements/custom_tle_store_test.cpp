#include "elements/custom_tle_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "elements/element_records.h"
#include "support/simulated_machine.h"

namespace veloran {
namespace {

using test::kLine1;
using test::kLine2;
using test::withColumns;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string line1Of(const std::string& number) {
    return withColumns(kLine1, 2, number);
}

std::string block(const std::string& name, const std::string& number) {
    return name + "\n" + line1Of(number) + "\n" + kLine2 + "\n";
}

boost::json::object object(const std::string& name, const std::string& number) {
    return {{"OBJECT_NAME", name}, {"TLE_LINE1", line1Of(number)}, {"TLE_LINE2", kLine2}};
}

std::string jsonOf(std::initializer_list<boost::json::object> objects) {
    return test::messages(objects);
}

class CustomTLEStoreTest : public ::testing::Test {
  protected:
    std::string fileText() const { return files.files.at(store.fileURL()); }
    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& set : store.load()) result.push_back(set.name);
        return result;
    }
    std::vector<std::int64_t> numbers() const {
        std::vector<std::int64_t> result;
        for (const auto& set : store.load()) result.push_back(set.noradId);
        return result;
    }
    void expectImported(const std::string& text, std::int64_t count) {
        const auto result = store.importFromText(text);
        EXPECT_EQ(result.error, std::nullopt);
        EXPECT_EQ(result.count, count);
    }
    void expectRefused(const std::string& text, const std::string& error) {
        const auto before = files.files;
        const auto result = store.importFromText(text);
        EXPECT_EQ(result.error, error);
        EXPECT_EQ(result.count, 0);
        EXPECT_EQ(files.files, before) << "nothing is stored with an error";
    }

    test::MemoryFiles files;
    CustomTLEStore store{files};
};

TEST_F(CustomTLEStoreTest, StandsInTheDirectoryOfTheProgram) {
    EXPECT_EQ(store.fileURL(), "/home/test/.veloran/custom.tle");
    EXPECT_THAT(store.load(), IsEmpty());
}

TEST_F(CustomTLEStoreTest, BlankLinesBeforeABracketLeaveItJson) {
    expectImported("\n \t\r\n\n" + jsonOf({object("A", "00001")}) + "\n\n", 1);
    EXPECT_THAT(names(), ElementsAre("A"));
}

TEST_F(CustomTLEStoreTest, ObjectsWithoutLinesAreLeftOut) {
    auto noLine1 = object("B", "00002");
    noLine1.erase("TLE_LINE1");
    auto noLine2 = object("D", "00004");
    noLine2["TLE_LINE2"] = nullptr;
    expectImported(jsonOf({object("A", "00001"), noLine1, object("C", "00003"), noLine2,
                           object("E", "00005")}),
                   3);
    EXPECT_THAT(numbers(), ElementsAre(1, 3, 5));
}

TEST_F(CustomTLEStoreTest, OfOneSetTwiceInATextTheSecondStands) {
    expectImported(block("FIRST", "00001") + block("SECOND", "00001"), 1);
    EXPECT_EQ(fileText(), block("SECOND", "00001"));
}

TEST_F(CustomTLEStoreTest, AnEmptyLineDoesNotFallThroughToTheOtherKey) {
    auto empty = object("A", "00001");
    empty["TLE_LINE2"] = "";
    empty["tle2"] = kLine2;
    expectRefused(jsonOf({empty}), "JSON parsed but no TLEs found");
    empty["TLE_LINE2"] = 7;
    expectImported(jsonOf({empty}), 1);
}

TEST_F(CustomTLEStoreTest, AfterClearThereIsNothingAndAddBringsTheFileBack) {
    expectImported(block("A", "00001"), 1);
    const auto sets = store.load();
    store.clear();
    EXPECT_FALSE(files.files.contains(store.fileURL()));
    EXPECT_THAT(store.load(), IsEmpty());
    store.clear();
    EXPECT_EQ(store.add(sets), 1);
    EXPECT_EQ(fileText(), block("A", "00001"));
}

TEST_F(CustomTLEStoreTest, RemovingAnUnknownNumberRewritesTheSameContent) {
    expectImported(block("A", "00001") + block("B", "00002"), 2);
    const std::string before = fileText();
    files.files.at(store.fileURL()) += "a stray line\n";
    store.remove(3);
    EXPECT_EQ(fileText(), before);
}

TEST_F(CustomTLEStoreTest, RemoveTakesEverySetOfTheNumber) {
    files.files[store.fileURL()] = block("A", "00001") + block("B", "00002") + block("C", "00001");
    store.remove(1);
    EXPECT_EQ(fileText(), block("B", "00002"));
}

TEST_F(CustomTLEStoreTest, OfSeveralStoredSetsOfANumberTheFirstIsReplaced) {
    files.files[store.fileURL()] = block("A", "00001") + block("B", "00002") + block("C", "00001");
    expectImported(block("NEW", "00001"), 0);
    EXPECT_EQ(fileText(), block("NEW", "00001") + block("B", "00002") + block("C", "00001"));
}

TEST_F(CustomTLEStoreTest, LineOf68CharactersInJsonIsLeftOutWithoutAWord) {
    auto cut = object("CUT", "00001");
    cut["TLE_LINE1"] = line1Of("00001").substr(0, 68);
    expectImported(jsonOf({cut, object("WHOLE", "00002")}), 1);
    EXPECT_THAT(names(), ElementsAre("WHOLE"));
}

TEST_F(CustomTLEStoreTest, LineOf68CharactersIsNotFilledUpByItsLineEnd) {
    auto cut = object("CUT", "00001");
    cut["TLE_LINE1"] = line1Of("00001").substr(0, 68) + "\n";
    expectRefused(jsonOf({cut}), "JSON parsed but no TLEs found");
}

TEST_F(CustomTLEStoreTest, EveryRecordReadBackIsTaggedAsImported) {
    expectImported(jsonOf({object("A", "00001")}), 1);
    EXPECT_EQ(store.load().at(0).source, "custom");
    EXPECT_EQ(decodeImport(block("A", "00001")).sets.at(0).source, "custom");
    EXPECT_EQ(decodeImport(jsonOf({object("A", "00001")})).sets.at(0).source, "custom");
}

TEST_F(CustomTLEStoreTest, ErrorsStoreNothing) {
    expectImported(block("A", "00001"), 1);
    expectRefused("[1, 2]", "JSON could not be parsed");
    expectRefused("{\"name\": ", "JSON could not be parsed");
    expectRefused("[]", "JSON parsed but no TLEs found");
    expectRefused("", "No valid TLEs found in text");
    // A bracket at the front is JSON or nothing.
    expectRefused("[x]\n" + block("B", "00002"), "JSON could not be parsed");
}

// ---- Hostile texts and a hostile disk.

TEST_F(CustomTLEStoreTest, LineEndsWithinANameAreBlanks) {
    for (const char* const lineEnd : {"\n", "\r", "\v", "\f", "\xC2\x85", "\xE2\x80\xA8"}) {
        store.clear();
        expectImported(block("BEFORE", "00001"), 1);
        const std::string name = std::string("X") + lineEnd + "1 Y" + lineEnd + "2 Z";
        expectImported(jsonOf({object(name, "00002"), object("AFTER", "00003")}), 2);
        EXPECT_THAT(names(), ElementsAre("BEFORE", "X 1 Y 2 Z", "AFTER"));
    }
}

TEST_F(CustomTLEStoreTest, ANameCannotBringSetsOfItsOwn) {
    expectImported(jsonOf({object(block("FOREIGN", "00009"), "00001")}), 1);
    EXPECT_THAT(numbers(), ElementsAre(1));
}

TEST_F(CustomTLEStoreTest, LinesCannotBringSetsOfTheirOwn) {
    auto hostile = object("A", "00001");
    hostile["TLE_LINE1"] = line1Of("00001") + "\n" + block("FOREIGN", "00009");
    hostile["TLE_LINE2"] = std::string(kLine2) + "\r\n" + block("FOREIGN", "00008") + "1 ";
    expectImported(jsonOf({hostile, object("B", "00002")}), 2);
    EXPECT_THAT(numbers(), ElementsAre(1, 2));
}

TEST_F(CustomTLEStoreTest, LineEndsBehindALineAreDropped) {
    auto closed = object("A", "00001");
    closed["TLE_LINE1"] = line1Of("00001") + "\n";
    closed["TLE_LINE2"] = std::string(kLine2) + "\n";
    expectImported(jsonOf({closed}), 1);
    EXPECT_EQ(fileText(), block("A", "00001"));
}

TEST_F(CustomTLEStoreTest, OtherControlCharactersInANameAreReadBack) {
    const std::string name("A\0B\tC\x1B[31mD\x7F", 13);
    expectImported(jsonOf({object(name, "00001")}), 1);
    EXPECT_THAT(names(), ElementsAre(name));
}

TEST_F(CustomTLEStoreTest, NamesThatLookLikeLinesAreLostAndTheSetsAreNot) {
    expectImported(
        jsonOf({object("1 X", "00001"), object("2 X", "00002"), object(line1Of("00009"), "00003"),
                object(kLine2, "00004"), object("", "00005"), object("LAST", "00006")}),
        6);
    EXPECT_THAT(numbers(), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(names(),
                ElementsAre("Unknown", "Unknown", "Unknown", "Unknown", "Unknown", "LAST"));
}

TEST_F(CustomTLEStoreTest, ASetThatOnlyItsJsonAcceptsIsNotReadBackAndHarmsNoOther) {
    auto odd = object("ODD", "00002");
    odd["TLE_LINE1"] = withColumns(line1Of("00002"), 0, "X");
    expectImported(jsonOf({object("A", "00001"), odd, object("C", "00003")}), 3);
    EXPECT_THAT(numbers(), ElementsAre(1, 3));
}

TEST_F(CustomTLEStoreTest, AnyNameLeavesEverySetInTheFile) {
    constexpr unsigned kSeed = 20261121;
    std::mt19937 random(kSeed);
    const std::vector<std::string> pieces{"1 ", "2 ", "\n", "\r\n", " ",  "A",           "{",
                                          "\"", "\\", "\t", "\v",   "69", "\xE2\x80\xA9"};
    for (int round = 0; round < 500; ++round) {
        store.clear();
        boost::json::array objects;
        for (const char* const number : {"00001", "00002", "00003"}) {
            std::string name;
            for (auto n = random() % 6; n > 0; --n) name += pieces[random() % pieces.size()];
            objects.push_back(object(name, number));
        }
        expectImported(boost::json::serialize(objects), 3);
        ASSERT_THAT(numbers(), ElementsAre(1, 2, 3)) << "seed " << kSeed << ", round " << round;
    }
}

TEST_F(CustomTLEStoreTest, FiftyMegabytesOfGarbageGiveAnError) {
    constexpr std::size_t kSize = 50 * 1000 * 1000;
    expectRefused(std::string(kSize, 'x'), "No valid TLEs found in text");
    expectRefused(std::string(kSize, '\n'), "No valid TLEs found in text");
    expectRefused(std::string(kSize, '['), "JSON could not be parsed");
    std::string lines;
    while (lines.size() < kSize) lines += "1 \n2 \n";
    expectRefused(lines, "No valid TLEs found in text");
}

TEST_F(CustomTLEStoreTest, NameOfNothingButLineEndsIsNone) {
    constexpr std::size_t kSize = 2 * 1000 * 1000;
    expectImported(jsonOf({object(std::string(kSize, '\n'), "00001")}), 1);
    EXPECT_THAT(names(), ElementsAre("Unknown"));
}

TEST_F(CustomTLEStoreTest, StoredFileThatIsNotUtf8ReadsAsEmpty) {
    files.files[store.fileURL()] = block("A\xFF", "00001");
    EXPECT_THAT(store.load(), IsEmpty());
}

TEST_F(CustomTLEStoreTest, UnreadableFileIsPutAsideBeforeAnImportReplacesIt) {
    const std::string wide("A\0\n\0", 4);  // valid UTF-8, of another encoding
    for (const auto& unreadable : {block("A\xFF", "00001"), wide, std::string("notes of mine")}) {
        files.files[store.fileURL()] = unreadable;
        const auto result = store.importFromText(block("B", "00002"));
        EXPECT_EQ(result.count, 1);
        EXPECT_TRUE(result.hasPutAside);
        EXPECT_THAT(names(), ElementsAre("B"));
        EXPECT_EQ(files.files.at(store.fileURL().string() + ".unreadable"), unreadable);
    }
    EXPECT_FALSE(store.importFromText(block("C", "00003")).hasPutAside);
    EXPECT_THAT(names(), ElementsAre("B", "C"));
}

TEST_F(CustomTLEStoreTest, EmptyFileIsNoUnreadableOne) {
    files.files[store.fileURL()] = "\n";
    EXPECT_FALSE(store.importFromText(block("B", "00002")).hasPutAside);
    EXPECT_EQ(files.files.size(), 1u);
}

TEST_F(CustomTLEStoreTest, UnreadableFileThatCannotBePutAsideStays) {
    files.files[store.fileURL()] = block("A\xFF", "00001");
    files.writable = false;
    const auto result = store.importFromText(block("B", "00002"));
    EXPECT_EQ(result.error, "custom.tle cannot be read, and not be put aside either");
    EXPECT_EQ(result.count, 0);
    EXPECT_EQ(fileText(), block("A\xFF", "00001"));
}

TEST_F(CustomTLEStoreTest, RemovingLeavesAnUnreadableFileAlone) {
    files.files[store.fileURL()] = block("A\xFF", "00001");
    store.remove(1);
    EXPECT_EQ(fileText(), block("A\xFF", "00001"));
    EXPECT_EQ(files.files.size(), 1u);
}

TEST_F(CustomTLEStoreTest, MessageTellsOfTheFileThatWasPutAside) {
    EXPECT_EQ(importMessage(2, std::nullopt, true).text,
              "Imported 2 satellites; the earlier custom.tle could not be read and is kept as "
              "custom.tle.unreadable");
    EXPECT_FALSE(importMessage(2, std::nullopt, true).isError);
    EXPECT_EQ(importMessage(0, "why", true).text, "Error: why");
}

TEST_F(CustomTLEStoreTest, TextThatIsNotUtf8IsRefusedBeforeItSpoilsTheFile) {
    expectImported(block("A", "00001"), 1);
    expectRefused(block("B\xFF", "00002"), "No valid TLEs found in text");
    expectRefused("[{\"name\": \"\xFF\"}]", "JSON could not be parsed");
    EXPECT_THAT(names(), ElementsAre("A"));
}

TEST_F(CustomTLEStoreTest, UnwritableFileStaysAsItWas) {
    expectImported(block("A", "00001"), 1);
    files.writable = false;
    expectImported(block("B", "00002"), 1);  // a failed write is not told
    store.remove(1);
    store.clear();
    EXPECT_THAT(names(), ElementsAre("A"));
}

TEST_F(CustomTLEStoreTest, ListTooLargeToBeReadBackIsNotWritten) {
    expectImported(block("A", "00001"), 1);
    expectImported(block(std::string(FileStore::kLargestFile, 'B'), "00002"), 1);
    EXPECT_EQ(fileText(), block("A", "00001"));
}

}  // namespace
}  // namespace veloran
