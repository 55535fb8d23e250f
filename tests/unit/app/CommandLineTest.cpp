#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillmender {
namespace {

std::optional<std::string> answerTo(std::vector<const char *> arguments) {
    arguments.insert(arguments.begin(), "quillmender");
    return commandLineAnswer(arguments);
}

TEST(CommandLineTest, TellsTheVersionOfTheBuild) {
    EXPECT_EQ(answerTo({"--version"}), "Quillmender " QUILLMENDER_VERSION "\n");
    EXPECT_EQ(answerTo({"-v"}), answerTo({"--version"}));
}

TEST(CommandLineTest, TellsHowToCallIt) {
    const auto help = answerTo({"--help"});
    ASSERT_TRUE(help);
    EXPECT_TRUE(help->starts_with("Usage: quillmender [--help | --version]\n"));
    EXPECT_EQ(answerTo({"-h"}), help);
}

TEST(CommandLineTest, AnswersAfterOtherArguments) {
    EXPECT_TRUE(answerTo({"-style", "fusion", "--version"}));
}

TEST(CommandLineTest, LeavesEverythingElseToTheToolkit) {
    EXPECT_EQ(answerTo({}), std::nullopt);
    EXPECT_EQ(answerTo({"-platform", "offscreen", "--versions", "help"}), std::nullopt);
}

} // namespace
} // namespace quillmender
