#include <gtest/gtest.h>

#include "elements/custom_tle_store.h"
#include "elements/element_records.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

TEST(ImportMessagesVectors, EveryResultHasItsLine) {
    constexpr const char* kFile = "data/import_messages.json";
    forEachCase(loadVectors(kFile), kFile, "cases", [](const boost::json::object& testCase) {
        expectKnownMembers(testCase, {"id", "note", "count", "error", "message", "isError"}, kFile);
        const auto& error = testCase.at("error");
        const auto message =
            importMessage(testCase.at("count").to_number<std::int64_t>(),
                          error.is_null() ? std::nullopt : std::optional(textOf(error)));
        EXPECT_EQ(message.text, textOf(testCase.at("message"))) << "field message";
        EXPECT_EQ(message.isError, testCase.at("isError").as_bool()) << "field isError";
    });
}

}  // namespace
}  // namespace veloran::test
