#include "AccessibilityTest.h"

#include "doubles/cf/Data.h"
#include "doubles/cf/Number.h"

#include <unistd.h>

namespace quillmender {
namespace {

using testing::ElementsAre;

TEST_F(AccessibilityTest, waitsForOneSecondAtMost) {
    const MacAccessibility another;
    EXPECT_THAT(calls(), ElementsAre("AXUIElementCreateSystemWide",
                                     "AXUIElementSetMessagingTimeout system-wide 1.000000"));
}

TEST_F(AccessibilityTest, asksTheSystemWideElementForTheFocusedOne) {
    const AttributeResult result =
        copy(accessibility.createSystemWide(), attribute::focusedElement);
    EXPECT_THAT(calls(), ElementsAre("AXUIElementCreateSystemWide",
                                     "AXUIElementCopyAttributeValue system-wide AXFocusedUIElement",
                                     "AXUIElementGetPid editor",
                                     "AXUIElementCopyAttributeValue editor AXSubrole"));
    EXPECT_EQ(result.error, AccessibilityError::success);
    EXPECT_NE(std::get<AccessibilityElementRef>(result.value), nullptr);
}

TEST_F(AccessibilityTest, keepsAnElementThatTheApplicationHasLetGo) {
    editor->give("AXValue", doubles::makeString(u"kept"));
    CFRetain(editor->ref());
    const AccessibilityElementRef element = focused();
    CFRelease(editor->ref());
    EXPECT_EQ(std::get<QString>(copy(element, attribute::value).value), QStringLiteral("kept"));
}

TEST_F(AccessibilityTest, neverReadsAPassword) {
    editor->give("AXSubrole", doubles::makeString(u"AXSecureTextField"));
    editor->give("AXSelectedText", doubles::makeString(u"secret"));
    editor->give("AXValue", doubles::makeString(u"secret"));
    editor->give("AXSelectedTextRange", doubles::makeRange(0, 6));
    const AccessibilityElementRef element = focused();
    for (const char *text : {attribute::selectedText, attribute::value}) {
        const AttributeResult result = copy(element, text);
        EXPECT_EQ(result.error, AccessibilityError::noValue);
        EXPECT_TRUE(std::holds_alternative<std::monostate>(result.value));
    }
    EXPECT_THAT(calls(), ElementsAre());
    EXPECT_EQ(std::get<TextRange>(copy(element, attribute::selectedTextRange).value),
              (TextRange{0, 6}));
}

TEST_F(AccessibilityTest, readsTheTextOfAnyOtherSubrole) {
    editor->give("AXValue", doubles::makeString(u"words"));
    const auto text = [&] { return std::get<QString>(copy(focused(), attribute::value).value); };
    editor->give("AXSubrole", doubles::makeString(u"AXSearchField"));
    EXPECT_EQ(text(), QStringLiteral("words"));
    editor->give("AXSubrole", doubles::makeData("AXSecureTextField"));
    EXPECT_EQ(text(), QStringLiteral("words"));
    editor->failReading("AXSubrole", kAXErrorAttributeUnsupported);
    EXPECT_EQ(text(), QStringLiteral("words"));
}

TEST_F(AccessibilityTest, itsOwnWindowsHaveNoFocus) {
    editor->process = ::getpid();
    const AttributeResult result =
        copy(accessibility.createSystemWide(), attribute::focusedElement);
    EXPECT_EQ(result.error, AccessibilityError::success);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(result.value));
    EXPECT_EQ(calls().back(), "AXUIElementGetPid editor");
}

TEST_F(AccessibilityTest, anElementOfNobodyKnownIsTakenForAnothersOwn) {
    editor->process = ::getpid();
    editor->tellsItsProcess = false;
    EXPECT_NE(focused(), nullptr);
}

TEST_F(AccessibilityTest, readsTexts) {
    const AccessibilityElementRef element = focused();
    editor->give("AXSelectedText", doubles::makeString(u"  w\u00F6rd \U0001F642"));
    editor->give("AXValue", doubles::makeString(u""));
    const AttributeResult selected = copy(element, attribute::selectedText);
    EXPECT_EQ(selected.error, AccessibilityError::success);
    EXPECT_EQ(std::get<QString>(selected.value), QStringLiteral("  w\u00F6rd \U0001F642"));
    EXPECT_EQ(std::get<QString>(copy(element, attribute::value).value), QString());
    EXPECT_THAT(calls(), ElementsAre("AXUIElementCopyAttributeValue editor AXSelectedText",
                                     "AXUIElementCopyAttributeValue editor AXValue"));
}

TEST_F(AccessibilityTest, readsARange) {
    const AccessibilityElementRef element = focused();
    editor->give("AXSelectedTextRange", doubles::makeRange(5, 3));
    const AttributeResult result = copy(element, attribute::selectedTextRange);
    EXPECT_EQ(std::get<TextRange>(result.value), (TextRange{5, 3}));
}

TEST_F(AccessibilityTest, aValueOfAnotherTypeIsNone) {
    const AccessibilityElementRef element = focused();
    const auto kindOf = [&](CFTypeRef value) {
        editor->give("AXValue", value);
        const AttributeResult result = copy(element, attribute::value);
        EXPECT_EQ(result.error, AccessibilityError::success);
        return result.value.index();
    };
    const SInt32 number = 7;
    EXPECT_EQ(kindOf(CFNumberCreate(nullptr, kCFNumberSInt32Type, &number)), 0U);
    EXPECT_EQ(kindOf(doubles::makeData("bytes")), 0U);
    EXPECT_EQ(kindOf(CFRetain(kCFBooleanTrue)), 0U);
    EXPECT_EQ(kindOf(doubles::makeRange(1, 2, kAXValueTypeCGPoint)), 0U);
    EXPECT_EQ(kindOf(doubles::makeRange(1, 2, kAXValueTypeAXError)), 0U);
    EXPECT_EQ(kindOf(doubles::makeRange(1, 2)), 2U);
    server.unpacksValues = false;
    EXPECT_EQ(kindOf(doubles::makeRange(1, 2)), 0U);
}

TEST_F(AccessibilityTest, successWithoutAValueIsNone) {
    server.focused = nullptr;
    const AttributeResult result =
        copy(accessibility.createSystemWide(), attribute::focusedElement);
    EXPECT_EQ(result.error, AccessibilityError::success);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(result.value));
}

TEST_F(AccessibilityTest, anErrorComesThroughWithoutAValue) {
    const AccessibilityElementRef element = focused();
    for (const AXError error : {kAXErrorFailure, kAXErrorIllegalArgument, kAXErrorInvalidUIElement,
                                kAXErrorCannotComplete, kAXErrorAttributeUnsupported,
                                kAXErrorAPIDisabled, kAXErrorNoValue, kAXErrorNotImplemented}) {
        editor->failReading("AXValue", error);
        const AttributeResult result = copy(element, attribute::value);
        EXPECT_EQ(static_cast<int>(result.error), static_cast<int>(error));
        EXPECT_TRUE(std::holds_alternative<std::monostate>(result.value));
    }
}

TEST_F(AccessibilityTest, aValueThatComesWithAnErrorIsReleased) {
    editor->give("AXValue", doubles::makeString(u"half"));
    editor->failReadingWithValue("AXValue", kAXErrorCannotComplete);
    const AttributeResult result = copy(focused(), attribute::value);
    EXPECT_EQ(result.error, AccessibilityError::cannotComplete);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(result.value));
}

TEST_F(AccessibilityTest, writesATextAndARange) {
    const AccessibilityElementRef element = focused();
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("new text")),
              AccessibilityError::success);
    EXPECT_EQ(set(element, attribute::selectedTextRange, TextRange{5, 10}),
              AccessibilityError::success);
    EXPECT_THAT(
        calls(),
        ElementsAre("AXUIElementSetAttributeValue editor AXValue new text",
                    "AXUIElementSetAttributeValue editor AXSelectedTextRange 5+10 of type 4"));
    EXPECT_EQ(doubles::describe(editor->value("AXValue")), "new text");
}

TEST_F(AccessibilityTest, aRefusedWriteIsAnError) {
    const AccessibilityElementRef element = focused();
    editor->failWriting("AXValue", kAXErrorAttributeUnsupported);
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("new")),
              AccessibilityError::attributeUnsupported);
}

TEST_F(AccessibilityTest, anUnansweredWriteIsJudgedByWhatIsShownThen) {
    const AccessibilityElementRef element = focused();
    editor->failWriting("AXValue", kAXErrorCannotComplete);
    editor->give("AXValue", doubles::makeString(u"new"));
    calls();
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("new")), AccessibilityError::success);
    EXPECT_THAT(calls(), ElementsAre("AXUIElementSetAttributeValue editor AXValue new",
                                     "AXUIElementCopyAttributeValue editor AXValue"));
    editor->give("AXValue", doubles::makeString(u"old"));
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("new")), AccessibilityError::failure);
    editor->failReading("AXValue", kAXErrorCannotComplete);
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("new")),
              AccessibilityError::cannotComplete);
    editor->failWriting("AXSelectedTextRange", kAXErrorCannotComplete);
    EXPECT_EQ(set(element, attribute::selectedTextRange, TextRange{0, 1}),
              AccessibilityError::cannotComplete);
}

TEST_F(AccessibilityTest, aRangeThatCannotBePackedIsNotWritten) {
    const AccessibilityElementRef element = focused();
    server.createsValues = false;
    EXPECT_EQ(set(element, attribute::selectedTextRange, TextRange{0, 1}),
              AccessibilityError::failure);
    EXPECT_THAT(calls(), ElementsAre("AXValueCreate fails"));
}

TEST_F(AccessibilityTest, onlyTextsAndRangesCanBeWritten) {
    const AccessibilityElementRef element = focused();
    EXPECT_EQ(set(element, attribute::value, std::monostate()),
              AccessibilityError::illegalArgument);
    EXPECT_EQ(set(element, attribute::value, element), AccessibilityError::illegalArgument);
    EXPECT_THAT(calls(), ElementsAre());
}

TEST_F(AccessibilityTest, anElementOfNobodyIsNotAsked) {
    const auto foreign = std::make_shared<const AccessibilityElement>();
    for (const AccessibilityElementRef &element : {AccessibilityElementRef(), foreign}) {
        EXPECT_EQ(copy(element, attribute::value).error, AccessibilityError::illegalArgument);
        EXPECT_EQ(set(element, attribute::value, QString()), AccessibilityError::illegalArgument);
    }
    EXPECT_THAT(calls(), ElementsAre());
}

TEST_F(AccessibilityTest, withoutMemoryNothingIsAskedOrWritten) {
    const AccessibilityElementRef element = focused();
    const doubles::ScarceStrings none(0);
    EXPECT_EQ(copy(element, attribute::value).error, AccessibilityError::illegalArgument);
    EXPECT_EQ(set(element, attribute::value, TextRange()), AccessibilityError::illegalArgument);
    const doubles::ScarceStrings one(1);
    EXPECT_EQ(set(element, attribute::value, QStringLiteral("x")), AccessibilityError::failure);
    EXPECT_THAT(calls(), ElementsAre());
}

TEST_F(AccessibilityTest, leavesTheSelectionBeforeAPasteAlone) {
    fakes::await(accessibility.selectBeforePaste(focused(), TextRange{0, 4}));
    EXPECT_THAT(calls(), ElementsAre());
}

} // namespace
} // namespace quillmender
