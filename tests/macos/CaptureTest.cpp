#include "FocusedTextTest.h"
#include "doubles/cf/Data.h"
#include "doubles/cf/Number.h"

#include <unistd.h>

namespace quillmender {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Calls = std::vector<std::string>;

Calls operator+(Calls first, const Calls &second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class CaptureTest : public FocusedTextTest {
  protected:
    void expectNothing(const FocusReading &reading) {
        EXPECT_EQ(reading.application, application);
        EXPECT_EQ(reading.element, nullptr);
        expectNoText(reading);
    }
    static void expectNoText(const FocusReading &reading) {
        EXPECT_EQ(reading.selectedText, std::nullopt);
        EXPECT_EQ(reading.selectedRange, std::nullopt);
        EXPECT_EQ(reading.value, std::nullopt);
    }

    /// Every type of value but a text; the caller owns the references.
    static std::vector<CFTypeRef> otherTypes() {
        return {doubles::refOf<CFTypeRef>(new doubles::Number(7)), doubles::makeData("bytes"),
                CFRetain(kCFBooleanTrue), doubles::makeRange(0, 4)};
    }

    const Calls search = {
        "AXUIElementCreateSystemWide",
        "AXUIElementCopyAttributeValue system-wide AXFocusedUIElement",
    };
    const Calls owner = {"AXUIElementGetPid editor"};
    /// Whose the focused element is, and whether it holds a password.
    const Calls examination = owner + Calls{"AXUIElementCopyAttributeValue editor AXSubrole"};
    const Calls selectedText = {"AXUIElementCopyAttributeValue editor AXSelectedText"};
    const Calls wholeValue = {"AXUIElementCopyAttributeValue editor AXValue"};
    const Calls range = {"AXUIElementCopyAttributeValue editor AXSelectedTextRange"};
};

const AXError everyError[] = {
    kAXErrorFailure,        kAXErrorIllegalArgument,      kAXErrorInvalidUIElement,
    kAXErrorCannotComplete, kAXErrorAttributeUnsupported, kAXErrorAPIDisabled,
    kAXErrorNoValue,        kAXErrorNotImplemented,
};

TEST_F(CaptureTest, WaitsForOneSecondAtMost) {
    const MacFocusedText another;
    EXPECT_THAT(calls(), ElementsAre("AXUIElementCreateSystemWide",
                                     "AXUIElementSetMessagingTimeout system-wide 1.000000"));
}

TEST_F(CaptureTest, ReadsTheSelectedTextThenItsRange) {
    setText(u"a  w\u00F6rd \U0001F642 b", CFRangeMake(1, 10));
    const FocusReading reading = read();
    EXPECT_EQ(calls(), search + examination + selectedText + range);
    EXPECT_EQ(reading.application, application);
    EXPECT_NE(reading.element, nullptr);
    EXPECT_FALSE(reading.isElsewhere);
    EXPECT_EQ(reading.selectedText, QStringLiteral("  w\u00F6rd \U0001F642 "));
    EXPECT_EQ(reading.selectedRange, (TextRange{1, 10}));
    EXPECT_EQ(reading.value, std::nullopt);
    EXPECT_EQ(reading.chordContext, nullptr);
}

TEST_F(CaptureTest, ReadsTheWholeValueWhenNothingIsSelected) {
    setText(u"  \U0001F642lo  ");
    editor->give("AXSelectedText", doubles::makeString(u""));
    editor->give("AXSelectedTextRange", doubles::makeRange(3, 0));
    const FocusReading reading = read();
    EXPECT_EQ(calls(), search + examination + selectedText + wholeValue);
    EXPECT_NE(reading.element, nullptr);
    EXPECT_EQ(reading.selectedText, std::nullopt);
    EXPECT_EQ(reading.selectedRange, std::nullopt) << "of a selected text only";
    EXPECT_EQ(reading.value, QStringLiteral("  \U0001F642lo  ")) << "as the field holds it";
}

TEST_F(CaptureTest, ABlankSelectionIsNone) {
    for (const auto *const blank : {u"", u" ", u" \n\t", u"\u00A0 \u2028\r\n"}) {
        setText(u"some text", CFRangeMake(4, 1));
        editor->give("AXSelectedText", doubles::makeString(blank));
        const FocusReading reading = read();
        EXPECT_EQ(calls(), search + examination + selectedText + wholeValue);
        EXPECT_EQ(reading.selectedText, std::nullopt);
        EXPECT_EQ(reading.selectedRange, std::nullopt);
        EXPECT_EQ(reading.value, QStringLiteral("some text"));
    }
}

TEST_F(CaptureTest, ABlankFieldHasAnElementAndNoText) {
    for (const auto *const blank : {u"", u" \n", u"\u00A0 \u2028\r\n\t"}) {
        setText(blank);
        const FocusReading reading = read();
        EXPECT_EQ(calls(), search + examination + selectedText + wholeValue);
        EXPECT_NE(reading.element, nullptr);
        expectNoText(reading);
    }
}

TEST_F(CaptureTest, ATextOfAnotherTypeIsNone) {
    for (const CFTypeRef selected : otherTypes()) {
        setText(u"text");
        editor->give("AXSelectedText", selected);
        const FocusReading reading = read();
        EXPECT_EQ(reading.selectedText, std::nullopt);
        EXPECT_EQ(reading.value, QStringLiteral("text"));
    }
    for (const CFTypeRef whole : otherTypes()) {
        editor->give("AXValue", whole);
        calls();
        const FocusReading reading = read();
        EXPECT_EQ(calls(), search + examination + selectedText + wholeValue);
        EXPECT_NE(reading.element, nullptr);
        expectNoText(reading);
    }
}

TEST_F(CaptureTest, ATextThatCannotBeReadIsNone) {
    setText(u"a word", CFRangeMake(2, 4));
    for (const AXError error : everyError) {
        editor->failReading("AXSelectedText", error);
        const FocusReading reading = read();
        EXPECT_EQ(calls(), search + examination + selectedText + wholeValue);
        EXPECT_EQ(reading.selectedText, std::nullopt);
        EXPECT_EQ(reading.value, QStringLiteral("a word"));
    }
    for (const AXError error : everyError) {
        editor->failReading("AXValue", error);
        const FocusReading reading = read();
        EXPECT_NE(reading.element, nullptr);
        expectNoText(reading);
    }
}

TEST_F(CaptureTest, WhatComesBesideAnErrorIsNone) {
    setText(u"a word", CFRangeMake(2, 4));
    editor->failReadingWithValue("AXSelectedTextRange", kAXErrorFailure);
    EXPECT_EQ(read().selectedText, QStringLiteral("word"));
    EXPECT_EQ(read().selectedRange, std::nullopt);
    editor->failReadingWithValue("AXSelectedText", kAXErrorCannotComplete);
    EXPECT_EQ(read().selectedText, std::nullopt);
    EXPECT_EQ(read().value, QStringLiteral("a word"));
    editor->failReadingWithValue("AXValue", kAXErrorNoValue);
    expectNoText(read());
    EXPECT_NE(read().element, nullptr);
    server.focusedError = kAXErrorFailure;
    server.focusedBesideError = true;
    expectNothing(read());
}

TEST_F(CaptureTest, WithoutAFocusedElementNobodyIsAsked) {
    setText(u"word", CFRangeMake(0, 4));
    for (const AXError error : everyError) {
        server.focusedError = error;
        const FocusReading reading = read();
        EXPECT_EQ(calls(), search);
        EXPECT_FALSE(reading.isElsewhere);
        expectNothing(reading);
    }
    server.focusedError = kAXErrorSuccess;
    server.focused = nullptr;
    expectNothing(read());
}

TEST_F(CaptureTest, WhatIsNoElementHasNoFocus) {
    for (const CFTypeRef other : otherTypes()) {
        server.focused = other;
        calls();
        expectNothing(read());
        EXPECT_EQ(calls(), search);
        CFRelease(other);
    }
}

TEST_F(CaptureTest, TheTextOfAnotherApplicationIsNotRead) {
    setText(u"of another", CFRangeMake(0, 10));
    editor->process = 8;
    const FocusReading reading = read();
    EXPECT_EQ(calls(), search + owner);
    EXPECT_TRUE(reading.isElsewhere);
    expectNothing(reading);
}

TEST_F(CaptureTest, WhoseNobodyTellsIsTakenForTheOneAskedFor) {
    setText(u"word", CFRangeMake(0, 4));
    editor->process = ::getpid();
    editor->tellsItsProcess = false;
    EXPECT_EQ(read().selectedText, QStringLiteral("word"));
    editor->process = 8;
    editor->tellsItsProcess = true;
    application = std::make_shared<const Process>(0);
    const FocusReading reading = read();
    EXPECT_EQ(reading.selectedText, QStringLiteral("word"));
    EXPECT_FALSE(reading.isElsewhere);
}

TEST_F(CaptureTest, ItsOwnPanelHasNoFocus) {
    setText(u"an instruction typed into the panel");
    editor->process = ::getpid();
    const FocusReading reading = read();
    EXPECT_EQ(calls(), search + owner);
    EXPECT_FALSE(reading.isElsewhere) << "the application keeps its focus behind the panel";
    expectNothing(reading);
}

TEST_F(CaptureTest, WithoutAnApplicationNobodyIsAsked) {
    setText(u"word", CFRangeMake(0, 4));
    application = nullptr;
    expectNothing(read());
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(CaptureTest, APasswordIsNotRead) {
    editor->give("AXSubrole", doubles::makeString(u"AXSecureTextField"));
    setText(u"secret", CFRangeMake(0, 6));
    const FocusReading reading = read();
    EXPECT_EQ(calls(), search + examination);
    EXPECT_NE(reading.element, nullptr);
    expectNoText(reading);
    EXPECT_EQ(fakes::await(focusedText.selectedRange(reading.element)), (TextRange{0, 6}));
    EXPECT_EQ(calls(), range);
}

TEST_F(CaptureTest, TheTextOfAnyOtherSubroleIsRead) {
    setText(u"words");
    editor->give("AXSubrole", doubles::makeString(u"AXSearchField"));
    EXPECT_EQ(read().value, QStringLiteral("words"));
    editor->give("AXSubrole", doubles::makeData("AXSecureTextField"));
    EXPECT_EQ(read().value, QStringLiteral("words"));
    editor->failReading("AXSubrole", kAXErrorAttributeUnsupported);
    EXPECT_EQ(read().value, QStringLiteral("words"));
}

TEST_F(CaptureTest, KeepsAnElementThatTheApplicationHasLetGo) {
    editor->give("AXSelectedTextRange", doubles::makeRange(5, 3));
    CFRetain(editor->ref());
    const FocusedElementRef element = focused();
    CFRelease(editor->ref());
    EXPECT_EQ(fakes::await(focusedText.selectedRange(element)), (TextRange{5, 3}));
    EXPECT_EQ(calls(), range);
}

TEST_F(CaptureTest, ARangeIsOnlyWhatSaysThatItIsOne) {
    setText(u"word", CFRangeMake(0, 4));
    const FocusedElementRef element = focused();
    const auto rangeOf = [&](CFTypeRef packed) {
        editor->give("AXSelectedTextRange", packed);
        EXPECT_EQ(read().selectedText, QStringLiteral("word"));
        const std::optional<TextRange> alone = fakes::await(focusedText.selectedRange(element));
        EXPECT_EQ(read().selectedRange, alone);
        return alone;
    };
    EXPECT_EQ(rangeOf(doubles::makeRange(1, 2)), (TextRange{1, 2}));
    EXPECT_EQ(rangeOf(doubles::makeRange(1, 2, kAXValueTypeCGPoint)), std::nullopt);
    EXPECT_EQ(rangeOf(doubles::makeRange(1, 2, kAXValueTypeCGSize)), std::nullopt);
    EXPECT_EQ(rangeOf(doubles::makeRange(1, 2, kAXValueTypeAXError)), std::nullopt);
    EXPECT_EQ(rangeOf(doubles::makeString(u"{0, 4}")), std::nullopt);
    EXPECT_EQ(rangeOf(doubles::makeData("bytes")), std::nullopt);
    server.unpacksValues = false;
    EXPECT_EQ(rangeOf(doubles::makeRange(1, 2)), std::nullopt);
}

TEST_F(CaptureTest, ARangeThatCannotBeReadIsAbsent) {
    setText(u"word", CFRangeMake(0, 4));
    const FocusedElementRef element = focused();
    for (const AXError error : everyError) {
        editor->failReading("AXSelectedTextRange", error);
        EXPECT_EQ(read().selectedText, QStringLiteral("word"));
        EXPECT_EQ(read().selectedRange, std::nullopt);
        EXPECT_EQ(fakes::await(focusedText.selectedRange(element)), std::nullopt);
    }
}

TEST_F(CaptureTest, AnElementOfNobodyHasNoRange) {
    EXPECT_EQ(fakes::await(focusedText.selectedRange(nullptr)), std::nullopt);
    const auto foreign = std::make_shared<const FocusedElement>();
    EXPECT_EQ(fakes::await(focusedText.selectedRange(foreign)), std::nullopt);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(CaptureTest, WithoutMemoryForItsNameNoAttributeIsAskedFor) {
    setText(u"word", CFRangeMake(0, 4));
    for (int strings = 0; strings < 4; ++strings) {
        const doubles::ScarceStrings few(strings);
        EXPECT_EQ(read().selectedRange, std::nullopt);
        EXPECT_THAT(calls(), Each(Not(HasSubstr("null"))));
    }
    const doubles::ScarceStrings none(0);
    expectNothing(read());
}

TEST_F(CaptureTest, LeavesTheSelectionBeforeAPasteAlone) {
    const FocusedElementRef element = focused();
    EXPECT_EQ(fakes::await(focusedText.select(element, {0, 4})), PasteTarget::selected);
    EXPECT_THAT(calls(), IsEmpty());
}

} // namespace
} // namespace quillmender
