#pragma once

#include <gtest/gtest.h>

#include <boost/json.hpp>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace veloran::test {

/// Directory of golden files, with "orbit" and "data" in it: $VELORAN_VECTORS, else tests/vectors.
std::filesystem::path vectorsDirectory();

/// A golden file, e.g. loadVectors("data/tick.json"). A file that is missing or no JSON fails the
/// test that asks for it (throws, which GoogleTest reports with file and reason).
boost::json::object loadVectors(std::string_view name);

/// Fails the test when `object` holds a member that is not in `known`, so that nothing of a golden
/// file is skipped unseen. `where` names file and case.
void expectKnownMembers(const boost::json::object& object,
                        std::initializer_list<std::string_view> known, const std::string& where);

/// Runs `check(case)` for every element of `array` in the file, under a trace that names file,
/// array, index and the case's id; fails if the array is missing or empty.
void forEachCase(const boost::json::object& file, std::string_view fileName, std::string_view array,
                 const std::function<void(const boost::json::object& testCase)>& check);

double number(const boost::json::value& value);  ///< integers too; fails on anything else
std::string fromHex(std::string_view hex);

/// Zero of either sign is zero; otherwise within `relative` of the expected.
::testing::AssertionResult closeTo(double actual, double expected, double relative = 1e-12);

}  // namespace veloran::test
