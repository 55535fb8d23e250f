#include "FocusedTextTest.h"
#include "doubles/cf/Data.h"

namespace quillmender {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Outcome = Replacement::Outcome;

class ReplacementTest : public FocusedTextTest {
  protected:
    Replacement replace(const FocusedElementRef &element, TextRange range, const QString &text) {
        return fakes::await(focusedText.replace(element, range, text));
    }

    /// Nothing was written, and the log will say why.
    void expectRefused(const Replacement &replacement) {
        EXPECT_EQ(replacement.outcome, Outcome::refused);
        EXPECT_FALSE(replacement.reason.isEmpty());
    }

    const std::string readValue = "AXUIElementCopyAttributeValue editor AXValue";
    const std::string writeNew = "AXUIElementSetAttributeValue editor AXValue new";
    const std::string selectNew =
        "AXUIElementSetAttributeValue editor AXSelectedTextRange 0+3 of type 4";
};

TEST_F(ReplacementTest, RewritesTheValueAndSelectsWhatItInserted) {
    setText(u"abcdeXYZfgh", CFRangeMake(5, 3));
    const FocusedElementRef element = focused();
    const Replacement written = replace(element, {5, 3}, QStringLiteral("0123456789"));
    EXPECT_THAT(
        calls(),
        ElementsAre(readValue, "AXUIElementSetAttributeValue editor AXValue abcde0123456789fgh",
                    "AXUIElementSetAttributeValue editor AXSelectedTextRange 5+10 of type 4"));
    EXPECT_EQ(written.outcome, Outcome::done);
    EXPECT_EQ(value(), "abcde0123456789fgh");
}

TEST_F(ReplacementTest, WhatStandsAroundTheRangeIsTakenAsItIsNow) {
    setText(u"one two", CFRangeMake(4, 3));
    const FocusedElementRef element = focused();
    setText(u"ONE two three");
    EXPECT_EQ(replace(element, {4, 3}, QStringLiteral("2")).outcome, Outcome::done);
    EXPECT_EQ(value(), "ONE 2 three");
}

TEST_F(ReplacementTest, ReplacesTheRangeAndNothingElse) {
    const struct {
        TextRange range;
        const char *wanted;
    } cases[] = {{{0, 0}, "newone two"}, {{0, 3}, "new two"},    {{3, 1}, "onenewtwo"},
                 {{4, 3}, "one new"},    {{7, 0}, "one twonew"}, {{0, 7}, "new"}};
    const FocusedElementRef element = focused();
    for (const auto &each : cases) {
        setText(u"one two");
        EXPECT_EQ(replace(element, each.range, QStringLiteral("new")).outcome, Outcome::done);
        EXPECT_EQ(value(), each.wanted);
        EXPECT_EQ(doubles::describe(editor->value("AXSelectedTextRange")),
                  std::to_string(each.range.location) + "+3 of type 4");
    }
}

TEST_F(ReplacementTest, WritesTheTextAsItIs) {
    setText(u"text");
    const FocusedElementRef element = focused();
    replace(element, {0, 4}, QStringLiteral(" w\u00F6rd \U0001F642\n"));
    EXPECT_EQ(value(), " w\u00F6rd \U0001F642\n");
    EXPECT_EQ(doubles::describe(editor->value("AXSelectedTextRange")), "0+9 of type 4");
    replace(element, {0, 9}, QString());
    EXPECT_EQ(value(), "");
}

TEST_F(ReplacementTest, WritesNothingWithoutAReadableValue) {
    setText(u"word");
    const FocusedElementRef element = focused();
    const auto expectOnlyRead = [&] {
        calls();
        expectRefused(replace(element, {0, 0}, QStringLiteral("new")));
        EXPECT_THAT(calls(), ElementsAre(readValue));
    };
    editor->give("AXValue", doubles::makeData("word"));
    expectOnlyRead();
    editor->give("AXValue", doubles::makeString(u"word"));
    editor->failReadingWithValue("AXValue", kAXErrorCannotComplete);
    expectOnlyRead();
    editor->failReading("AXValue", kAXErrorInvalidUIElement);
    expectOnlyRead();
}

TEST_F(ReplacementTest, WritesNothingWhenTheRangeNoLongerFits) {
    setText(u"short");
    const FocusedElementRef element = focused();
    for (const TextRange range : {TextRange{3, 3}, TextRange{6, 0}, TextRange{-1, 2},
                                  TextRange{0, -1}, TextRange{2, 9223372036854775807}}) {
        expectRefused(replace(element, range, QStringLiteral("new")));
        EXPECT_THAT(calls(), ElementsAre(readValue));
    }
    EXPECT_EQ(value(), "short");
}

TEST_F(ReplacementTest, WritesNothingWhenTheRangeSplitsACharacter) {
    // a, family emoji of 8 units, e with a combining acute, CR LF
    setText(u"a\U0001F469\u200D\U0001F467\u200D\U0001F466e\u0301\r\n");
    const FocusedElementRef element = focused();
    for (const TextRange range :
         {TextRange{0, 2}, TextRange{2, 7}, TextRange{0, 4}, TextRange{9, 1}, TextRange{11, 1}}) {
        expectRefused(replace(element, range, QStringLiteral("x")));
        EXPECT_THAT(calls(), ElementsAre(readValue));
    }
    EXPECT_EQ(replace(element, {1, 8}, QStringLiteral("x")).outcome, Outcome::done);
    EXPECT_EQ(value(), "axe\u0301\r\n");
}

TEST_F(ReplacementTest, ARefusedValueSelectsNothing) {
    setText(u"word");
    const FocusedElementRef element = focused();
    for (const AXError error :
         {kAXErrorFailure, kAXErrorIllegalArgument, kAXErrorInvalidUIElement,
          kAXErrorAttributeUnsupported, kAXErrorAPIDisabled, kAXErrorNotImplemented}) {
        editor->failWriting("AXValue", error);
        const Replacement refused = replace(element, {0, 4}, QStringLiteral("new"));
        EXPECT_THAT(calls(), ElementsAre(readValue, writeNew));
        EXPECT_EQ(refused.outcome, Outcome::refused);
        EXPECT_TRUE(refused.reason.contains(QString::number(error)));
    }
    EXPECT_EQ(value(), "word");
}

TEST_F(ReplacementTest, AnUnansweredOrderThatWasCarriedOutIsDone) {
    setText(u"word");
    const FocusedElementRef element = focused();
    editor->failWriting("AXValue", kAXErrorCannotComplete);
    editor->onSet = [this](const std::string &) { setText(u"new"); };
    EXPECT_EQ(replace(element, {0, 4}, QStringLiteral("new")).outcome, Outcome::done);
    EXPECT_THAT(calls(), ElementsAre(readValue, writeNew, readValue, selectNew));
}

TEST_F(ReplacementTest, AnUnansweredOrderThatWasNotCarriedOutIsRefused) {
    setText(u"word");
    const FocusedElementRef element = focused();
    editor->failWriting("AXValue", kAXErrorCannotComplete);
    expectRefused(replace(element, {0, 4}, QStringLiteral("new")));
    EXPECT_THAT(calls(), ElementsAre(readValue, writeNew, readValue));
    EXPECT_EQ(value(), "word");
}

TEST_F(ReplacementTest, NobodyKnowsWhatCameOfAnUnansweredOrderWhenNoTextIsShown) {
    const auto expectUncertain = [this](const std::function<void()> &afterTheOrder) {
        setText(u"word");
        const FocusedElementRef element = focused();
        editor->failWriting("AXValue", kAXErrorCannotComplete);
        editor->onSet = [&](const std::string &) { afterTheOrder(); };
        const Replacement written = replace(element, {0, 4}, QStringLiteral("new"));
        EXPECT_THAT(calls(), ElementsAre(readValue, writeNew, readValue));
        EXPECT_EQ(written.outcome, Outcome::uncertain);
        EXPECT_FALSE(written.reason.isEmpty());
    };
    expectUncertain([this] { editor->give("AXValue", doubles::makeData("new")); });
    expectUncertain([this] { editor->failReading("AXValue", kAXErrorCannotComplete); });
}

TEST_F(ReplacementTest, ARefusedSelectionStillCounts) {
    setText(u"word");
    const FocusedElementRef element = focused();
    for (const AXError error : {kAXErrorFailure, kAXErrorCannotComplete}) {
        setText(u"word");
        editor->failWriting("AXSelectedTextRange", error);
        EXPECT_EQ(replace(element, {0, 4}, QStringLiteral("new")).outcome, Outcome::done);
        EXPECT_THAT(calls(), ElementsAre(readValue, writeNew, selectNew));
    }
}

TEST_F(ReplacementTest, ARangeThatCannotBeMadeStillCounts) {
    setText(u"word");
    const FocusedElementRef element = focused();
    server.createsValues = false;
    EXPECT_EQ(replace(element, {0, 4}, QStringLiteral("new")).outcome, Outcome::done);
    EXPECT_THAT(calls(), ElementsAre(readValue, writeNew, "AXValueCreate fails"));
    EXPECT_EQ(value(), "new");
}

TEST_F(ReplacementTest, WithoutMemoryNothingIsWritten) {
    setText(u"word");
    const FocusedElementRef element = focused();
    const std::vector<std::string> callsOf[] = {{}, {readValue}, {readValue}};
    int strings = 0;
    for (const auto &expected : callsOf) {
        const doubles::ScarceStrings few(strings++);
        expectRefused(replace(element, {0, 4}, QStringLiteral("new")));
        EXPECT_EQ(calls(), expected);
    }
    const doubles::ScarceStrings allButTheSelections(3);
    EXPECT_EQ(replace(element, {0, 4}, QStringLiteral("new")).outcome, Outcome::done);
    EXPECT_THAT(calls(), ElementsAre(readValue, writeNew));
}

TEST_F(ReplacementTest, ATextThatCannotBeMadeIsNotWritten) {
    setText(u"word");
    const FocusedElementRef element = focused();
    const doubles::MissingString ofTheNewValue(1);
    expectRefused(replace(element, {0, 4}, QStringLiteral("new")));
    EXPECT_THAT(calls(), ElementsAre(readValue));
    EXPECT_EQ(value(), "word");
}

TEST_F(ReplacementTest, APasswordIsNotWritten) {
    editor->give("AXSubrole", doubles::makeString(u"AXSecureTextField"));
    setText(u"secret");
    expectRefused(replace(focused(), {0, 6}, QStringLiteral("new")));
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(ReplacementTest, AnElementOfNobodyIsNotWritten) {
    const auto foreign = std::make_shared<const FocusedElement>();
    for (const FocusedElementRef &element : {FocusedElementRef(), foreign})
        expectRefused(replace(element, {0, 0}, QStringLiteral("new")));
    EXPECT_THAT(calls(), IsEmpty());
}

} // namespace
} // namespace quillmender
