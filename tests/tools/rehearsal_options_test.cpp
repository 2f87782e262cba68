#include "rehearse/rehearsal_options.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace veloran::test {
namespace {

using Arguments = std::vector<std::string_view>;

const Arguments kGood{"--elements",           "sets.txt", "--site", "52.52,-13.41,40", "--start",
                      "2026-11-20T18:30:05Z", "--days",   "7"};

Arguments with(std::string_view option, std::string_view value) {
    auto arguments = kGood;
    const auto place = std::ranges::find(arguments, option);
    if (place != arguments.end()) {
        *std::next(place) = value;
    } else {
        arguments.insert(arguments.end(), {option, value});
    }
    return arguments;
}

std::string refusalOf(const Arguments& arguments) {
    const auto result = readRehearsalOptions(arguments);
    const auto* refusal = std::get_if<RehearsalRefusal>(&result);
    return refusal ? refusal->reason : "";
}

TEST(RehearsalOptions, ReadWhatIsNeeded) {
    const auto options = std::get<RehearsalOptions>(readRehearsalOptions(kGood));
    EXPECT_EQ(options.file, "sets.txt");
    EXPECT_EQ(options.latitude, 52.52);
    EXPECT_EQ(options.longitude, -13.41);
    EXPECT_EQ(options.altitude, 40);
    EXPECT_EQ(options.start.unixSeconds(), 1795199405);
    EXPECT_EQ(options.seconds, 604800);
    EXPECT_FALSE(options.minElevation);
    EXPECT_FALSE(options.refreshHours);
}

TEST(RehearsalOptions, ReadTheOthersWithAnEqualsSignToo) {
    auto arguments = kGood;
    arguments.insert(arguments.end(), {"--min-elevation=0", "--refresh-every=6.5", "--days=0.25"});
    const auto options = std::get<RehearsalOptions>(readRehearsalOptions(arguments));
    EXPECT_EQ(options.minElevation, 0);
    EXPECT_EQ(options.refreshHours, 6.5);
    EXPECT_EQ(options.seconds, 21600);
}

TEST(RehearsalOptions, HelpAndVersionNeedNothingElse) {
    for (const auto* help : {"--help", "-h"}) {
        EXPECT_EQ(std::get<RehearsalHelp>(readRehearsalOptions(Arguments{help})),
                  RehearsalHelp::usage);
    }
    EXPECT_EQ(std::get<RehearsalHelp>(readRehearsalOptions(Arguments{"--days", "7", "--version"})),
              RehearsalHelp::version);
}

TEST(RehearsalOptions, WhatIsMissingIsNamed) {
    for (const std::string option : {"--elements", "--site", "--start", "--days"}) {
        auto arguments = kGood;
        const auto place = std::ranges::find(arguments, option);
        arguments.erase(place, place + 2);
        EXPECT_EQ(refusalOf(arguments), option + " is missing");
    }
    auto arguments = kGood;
    arguments.pop_back();
    EXPECT_EQ(refusalOf(arguments), "--days needs a value");
}

TEST(RehearsalOptions, WhatIsUnknownIsNamed) {
    EXPECT_EQ(refusalOf({"--speed", "7"}), "unknown option --speed");
    EXPECT_EQ(refusalOf({"--days=7", "sets.txt"}), "unexpected argument \"sets.txt\"");
    EXPECT_EQ(refusalOf({"--"}), "unknown option --");
}

TEST(RehearsalOptions, ValuesOutOfRangeAreRefused) {
    const std::vector<std::pair<std::string_view, Arguments>> bad{
        {"--site",
         {"", "52,13", "52,13,40,1", "91,13,40", "-90.1,13,40", "52,-181,40", "52,361,40",
          "52,13,x", "52, 13,40", "nan,13,40", "52,13,1e9"}},
        {"--days", {"", "0", "-1", "367", "seven", "0.000001", "inf"}},
        {"--min-elevation", {"", "-0.1", "90.5", "5deg"}},
        {"--refresh-every", {"", "0", "0.05", "-6", "1e300"}}};
    for (const auto& [option, values] : bad) {
        for (const auto value : values) {
            EXPECT_TRUE(refusalOf(with(option, value))
                            .starts_with(std::string(option) + " \"" + std::string(value) + "\""))
                << option << " " << value << ": " << refusalOf(with(option, value));
        }
    }
}

TEST(RehearsalOptions, StartIsAMomentOfTheCalendarInUtc) {
    EXPECT_EQ(parseUtc("2001-01-01T00:00:00Z"), Instant{0});
    EXPECT_EQ(parseUtc("2024-02-29T23:59:59Z")->unixSeconds(), 1709251199);
    for (const auto* text :
         {"", "2026-11-20", "2026-11-20T00:00:00", "2026-11-20 00:00:00Z", "2026-11-20T00:00:00z",
          "2026-02-29T00:00:00Z", "2026-13-01T00:00:00Z", "2026-00-10T00:00:00Z",
          "2026-11-00T00:00:00Z", "2026-11-20T24:00:00Z", "2026-11-20T00:60:00Z",
          "2026-11-20T00:00:60Z", "2026-11-20T00:00:0+Z", "+026-11-20T00:00:00Z"}) {
        EXPECT_FALSE(parseUtc(text)) << text;
    }
}

}  // namespace
}  // namespace veloran::test
