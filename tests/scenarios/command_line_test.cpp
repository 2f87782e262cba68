#include "app/command_line.h"

#include <gtest/gtest.h>

namespace veloran {
namespace {

using Arguments = std::vector<std::string_view>;

TEST(CommandLine, WithoutArgumentsTheWindowOpens) {
    EXPECT_FALSE(answerTo({}));
}

TEST(CommandLine, OptionsOfQtOpenTheWindow) {
    for (const Arguments& qt :
         {Arguments{"-platform", "offscreen"}, Arguments{"--style", "fusion"},
          Arguments{"-style=fusion"}, Arguments{"-reverse"}, Arguments{"-display", ":1"},
          Arguments{"-qwindowtitle", "--help"}, Arguments{"-session", "x", "-geometry", "9x9"}}) {
        EXPECT_EQ(withoutQtOptions(qt), Arguments{}) << qt[0];
        EXPECT_FALSE(answerTo(qt)) << qt[0];
    }
}

TEST(CommandLine, HelpAndVersionAreToldInEitherForm) {
    for (const std::string_view form : {"-h", "--help"}) {
        const auto answer = answerTo({"-platform", "xcb", form});
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->exitCode, 0);
        EXPECT_EQ(answer->text.find("Usage: veloran"), 0U);
        EXPECT_NE(answer->text.find("--version"), std::string::npos);
    }
    for (const std::string_view form : {"-v", "--version"}) {
        const auto answer = answerTo({form});
        ASSERT_TRUE(answer);
        EXPECT_EQ(answer->exitCode, 0);
        EXPECT_EQ(answer->text.find("veloran "), 0U);
        EXPECT_TRUE(answer->text.ends_with('\n'));
    }
}

TEST(CommandLine, WhatIsNotKnownIsRefusedByName) {
    for (const std::string_view unknown : {"--nonsense", "-x", "file.txt", "-", "--", "--helpme"}) {
        const auto answer = answerTo({unknown});
        ASSERT_TRUE(answer) << unknown;
        EXPECT_EQ(answer->exitCode, 2) << unknown;
        EXPECT_NE(answer->text.find('"' + std::string(unknown) + '"'), std::string::npos);
    }
}

TEST(CommandLine, NameOfTheProgramIsNoArgument) {
    char name[] = "veloran";
    char option[] = "--help";
    char* both[] = {name, option};
    EXPECT_EQ(argumentsOf(2, both), Arguments{"--help"});
    EXPECT_EQ(argumentsOf(1, both), Arguments{});
    EXPECT_EQ(argumentsOf(0, both), Arguments{});
}

}  // namespace
}  // namespace veloran
