#include "platform/linux/atspi/EditedText.h"

#include <gtest/gtest.h>

namespace quillmender::atspi {
namespace {

struct Case {
    const char *name;
    const char16_t *before;
    TextRange range;
    const char16_t *after;
    std::optional<TextRange> expected;
};

class EditedTextTest : public testing::TestWithParam<Case> {};

TEST_P(EditedTextTest, WordsAreFoundWhereTheyAreNow) {
    const Case &given = GetParam();
    const QString before = QString::fromUtf16(given.before);
    const QString after = QString::fromUtf16(given.after);
    const std::optional<TextRange> now = rangeAfterEdit(before, after, given.range);
    EXPECT_EQ(now, given.expected);
    if (now) {
        EXPECT_EQ(after.mid(now->location, now->length),
                  before.mid(given.range.location, given.range.length));
    }
}

// Of "one two three" the word in the middle was captured, if nothing else is said.
constexpr TextRange middle{4, 3};

INSTANTIATE_TEST_SUITE_P(
    Unedited, EditedTextTest,
    testing::Values(Case{"Equal", u"one two three", middle, u"one two three", middle},
                    Case{"Empty", u"", {0, 0}, u"", TextRange{0, 0}},
                    Case{"OutsideIsNotJudged", u"one", {2, 9}, u"one", TextRange{2, 9}}),
    [](const auto &chosen) { return chosen.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Before, EditedTextTest,
    testing::Values(
        Case{"Typed", u"one two three", middle, u"zero one two three", TextRange{9, 3}},
        Case{"Deleted", u"one two three", middle, u"two three", TextRange{0, 3}},
        Case{"Changed", u"one two three", middle, u"eins two three", TextRange{5, 3}},
        Case{"TypedAtTheEdge", u"one two three", middle, u"one xtwo three", TextRange{5, 3}},
        Case{"DeletedToTheEdge", u"one two three", middle, u"onetwo three", TextRange{3, 3}},
        Case{"TypedTheFirstLetterAgain", u"one two three", middle, u"one ttwo three",
             TextRange{5, 3}},
        Case{"TypedAWordThatBeginsAlike", u"one two three", middle, u"one to two three",
             TextRange{7, 3}},
        Case{"DeletedTheFirstLetterOfAPair",
             u"one ttwo three",
             {5, 3},
             u"one two three",
             TextRange{4, 3}},
        Case{"TypedBeforeTheWholeField", u"two", {0, 3}, u"one two", TextRange{4, 3}},
        Case{"TypedACharacterOfTwoUnits",
             u"\U0001F600 two",
             {3, 3},
             u"\U0001F600\U0001F601 two",
             TextRange{5, 3}},
        Case{"ChangedACharacterOfTwoUnits",
             u"\U0001F600 two",
             {3, 3},
             u"\U0001F601 two",
             TextRange{3, 3}}),
    [](const auto &chosen) { return chosen.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Behind, EditedTextTest,
    testing::Values(
        Case{"Typed", u"one two three", middle, u"one two three four", middle},
        Case{"Deleted", u"one two three", middle, u"one two", middle},
        Case{"Changed", u"one two three", middle, u"one two drei", middle},
        Case{"TypedAtTheEdge", u"one two three", middle, u"one twos three", middle},
        Case{"DeletedToTheEdge", u"one two three", middle, u"one twothree", middle},
        Case{"TypedTheLastLetterAgain", u"one two three", middle, u"one twoo three", middle},
        Case{"TypedAWordThatEndsAlike", u"one two three", middle, u"one two too three", middle},
        Case{"TypedBehindTheWholeField", u"two", {0, 3}, u"two three", TextRange{0, 3}},
        Case{"ChangedACharacterOfTwoUnits",
             u"two \U0001F600",
             {0, 3},
             u"two \U0001F601",
             TextRange{0, 3}}),
    [](const auto &chosen) { return chosen.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Inside, EditedTextTest,
    testing::Values(
        Case{"Typed", u"one two three", middle, u"one txwo three", std::nullopt},
        Case{"Deleted", u"one two three", middle, u"one to three", std::nullopt},
        Case{"Changed", u"one two three", middle, u"one tWo three", std::nullopt},
        Case{"FirstLetterIsGone", u"one two three", middle, u"one wo three", std::nullopt},
        Case{"LastLetterIsGone", u"one two three", middle, u"one tw three", std::nullopt},
        Case{"AllOfItIsGone", u"one two three", middle, u"one  three", std::nullopt},
        Case{"AcrossItsStart", u"one two three", middle, u"on wo three", std::nullopt},
        Case{"AcrossItsEnd", u"one two three", middle, u"one twhree", std::nullopt},
        Case{"OneOfItsLettersIsGone", u"a bbb c", {2, 3}, u"a bb c", std::nullopt},
        Case{"HalfACharacterChanged", u"x \U0001F600 y", {2, 2}, u"x \U0001F601 y", std::nullopt}),
    [](const auto &chosen) { return chosen.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Everything, EditedTextTest,
    testing::Values(Case{"OtherWords", u"one two three", middle, u"vier", std::nullopt},
                    Case{"OtherWordsAndTheSameElsewhere", u"one two three", middle, u"my two cents",
                         std::nullopt},
                    Case{"Emptied", u"one two three", middle, u"", std::nullopt},
                    Case{"FilledAfterBeingEmpty", u"", {0, 0}, u"new", TextRange{0, 0}},
                    Case{"EditedOnBothSides", u"one two three", middle, u"1 two 3", std::nullopt},
                    Case{"BehindTheEnd", u"one", {2, 9}, u"one two three", std::nullopt},
                    Case{"BeforeTheStart", u"one", {-1, 2}, u"one two", std::nullopt}),
    [](const auto &chosen) { return chosen.param.name; });

// Then it does not matter which of them is replaced.
TEST(EqualWordsTest, AreOneOfThemSideBySide) {
    const QString before = QStringLiteral("ab ab");
    const QString after = QStringLiteral("ab ab ab");
    for (const TextRange &range : {TextRange{0, 2}, TextRange{3, 2}}) {
        const std::optional<TextRange> now = rangeAfterEdit(before, after, range);
        ASSERT_TRUE(now.has_value());
        EXPECT_EQ(after.mid(now->location, now->length), QStringLiteral("ab"));
    }
}

} // namespace
} // namespace quillmender::atspi
