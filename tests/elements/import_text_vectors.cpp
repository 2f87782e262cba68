#include <gtest/gtest.h>

#include "elements/custom_tle_store.h"
#include "elements/element_records.h"
#include "support/simulated_machine.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "data/import_text.json";

std::optional<std::string> optionalText(const boost::json::value& value) {
    return value.is_null() ? std::nullopt : std::optional(textOf(value));
}

void expectImport(const CustomTLEStore::ImportResult& result, const boost::json::object& expected) {
    EXPECT_EQ(result.count, expected.at("count").to_number<std::int64_t>()) << "field count";
    EXPECT_EQ(result.error, optionalText(expected.at("error"))) << "field error";
    const auto message = importMessage(result.count, result.error);
    EXPECT_EQ(message.text, textOf(expected.at("message"))) << "field message";
    EXPECT_EQ(message.isError, expected.at("messageIsError").as_bool()) << "field messageIsError";
}

void runStep(MemoryFiles& files, const boost::json::object& step,
             const boost::json::object& expected) {
    CustomTLEStore store(files);
    const auto op = textOf(step.at("op"));
    if (op == "import") {
        expectImport(store.importFromText(textOf(step.at("text"))), expected);
    } else if (op == "remove") {
        store.remove(step.at("noradId").to_number<std::int64_t>());
    } else if (op == "clear") {
        store.clear();
    } else if (op == "file") {
        files.files[store.fileURL()] = textOf(step.at("text"));
    } else {
        FAIL() << "unknown step " << op;
    }

    EXPECT_EQ(files.read(store.fileURL()), optionalText(expected.at("file"))) << "field file";
    const auto loaded = store.load();
    const auto& records = expected.at("loaded").as_array();
    ASSERT_EQ(loaded.size(), records.size()) << "field loaded";
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        const auto& record = records[i].as_object();
        expectKnownMembers(record, {"name", "noradId", "source"}, kFile);
        EXPECT_EQ(loaded[i].name, textOf(record.at("name"))) << "loaded " << i;
        EXPECT_EQ(loaded[i].noradId, record.at("noradId").to_number<std::int64_t>())
            << "loaded " << i;
        EXPECT_EQ(loaded[i].source, textOf(record.at("source"))) << "loaded " << i;
    }
}

TEST(ImportTextVectors, EveryStepLeavesTheFileAsTold) {
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "steps", "expected"}, kFile);
        MemoryFiles files;
        const auto& steps = testCase.at("steps").as_array();
        const auto& expected = testCase.at("expected").as_array();
        ASSERT_EQ(steps.size(), expected.size());
        for (std::size_t i = 0; i < steps.size(); ++i) {
            SCOPED_TRACE("step " + std::to_string(i));
            expectKnownMembers(steps[i].as_object(), {"op", "text", "noradId"}, kFile);
            expectKnownMembers(expected[i].as_object(),
                               {"count", "error", "message", "messageIsError", "file", "loaded"},
                               kFile);
            runStep(files, steps[i].as_object(), expected[i].as_object());
        }
    });
}

}  // namespace
}  // namespace veloran::test
