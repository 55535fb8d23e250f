#include "SelectionTest.h"
#include "doubles/cf/Data.h"

#include <unistd.h>

namespace quillmender {
namespace {

class CaptureTest : public SelectionTest {
  protected:
    const QStringList beforeTheTexts = {
        QStringLiteral("frontmostApplication"),
        QStringLiteral("pasteboard.itemsWithin 1000"),
        QStringLiteral("pasteboard.changeCount"),
        QStringLiteral("AXUIElementCreateSystemWide"),
        QStringLiteral("AXUIElementCopyAttributeValue system-wide AXFocusedUIElement"),
    };
    const QStringList copyChord = {
        QStringLiteral("activate source"),
        QStringLiteral("sleep 120"),
        QStringLiteral("CGEventSourceCreate 0"),
        QStringLiteral("CGEventCreateKeyboardEvent 8 down"),
        QStringLiteral("CGEventCreateKeyboardEvent 8 up"),
        QStringLiteral("CGEventSetFlags 8 down 0x100000"),
        QStringLiteral("CGEventSetFlags 8 up 0x100000"),
        QStringLiteral("CGEventPost 0 8 down 0x100000"),
        QStringLiteral("CGEventPost 0 8 up 0x100000"),
        QStringLiteral("sleep 50"),
        QStringLiteral("pasteboard.changeCount"),
    };
    const QStringList copiedAndRestored = {
        QStringLiteral("pasteboard.string"),
        QStringLiteral("pasteboard.clear"),
        QStringLiteral("pasteboard.writeItems 1"),
    };
    /// Whose the focused element is, and whether it holds a password.
    const QStringList examination = {
        QStringLiteral("AXUIElementGetPid editor"),
        QStringLiteral("AXUIElementCopyAttributeValue editor AXSubrole"),
    };
    const QString selectedText =
        QStringLiteral("AXUIElementCopyAttributeValue editor AXSelectedText");
    const QString wholeValue = QStringLiteral("AXUIElementCopyAttributeValue editor AXValue");
    const QString range =
        QStringLiteral("AXUIElementCopyAttributeValue editor AXSelectedTextRange");
};

TEST_F(CaptureTest, takesTheSelectionTrimmedWithTheElementsRange) {
    setText(u"a  word  b", CFRangeMake(1, 8));
    const auto session = capture();
    EXPECT_EQ(*log, beforeTheTexts + examination + QStringList({selectedText, range}));
    EXPECT_EQ(session->selectedText, QStringLiteral("word"));
    EXPECT_EQ(session->selectedRange, (TextRange{1, 8}));
    EXPECT_EQ(session->captureScope, CaptureScope::selection);
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::accessibility);
}

TEST_F(CaptureTest, takesTheWholeFieldUntrimmed) {
    setText(u"  \U0001F642lo  ");
    const auto session = capture();
    EXPECT_EQ(*log, beforeTheTexts + examination + QStringList({selectedText, wholeValue}));
    EXPECT_EQ(session->selectedText, QStringLiteral("  \U0001F642lo  "));
    EXPECT_EQ(session->selectedRange, (TextRange{0, 8}));
    EXPECT_EQ(session->captureScope, CaptureScope::fullField);
}

TEST_F(CaptureTest, fallsThroughABlankSelectionToTheField) {
    setText(u"   text", CFRangeMake(0, 3));
    EXPECT_EQ(capture()->captureScope, CaptureScope::fullField);
}

TEST_F(CaptureTest, anUnreadableRangeIsAbsent) {
    setText(u"word", CFRangeMake(0, 4));
    editor->failReading("AXSelectedTextRange", kAXErrorAttributeUnsupported);
    EXPECT_EQ(capture()->selectedRange, std::nullopt);
}

TEST_F(CaptureTest, aRangeOfAnotherTypeIsAbsent) {
    setText(u"word", CFRangeMake(0, 4));
    editor->give("AXSelectedTextRange", doubles::makeRange(0, 4, kAXValueTypeCGSize));
    EXPECT_EQ(capture()->selectedRange, std::nullopt);
    editor->give("AXSelectedTextRange", doubles::makeString(u"{0, 4}"));
    EXPECT_EQ(capture()->selectedRange, std::nullopt);
}

TEST_F(CaptureTest, copiesWhenNoElementHasTheFocus) {
    server.focusedError = kAXErrorCannotComplete;
    copyYields(QStringLiteral(" copied "));
    const auto session = capture();
    EXPECT_EQ(*log, beforeTheTexts + copyChord + copiedAndRestored);
    EXPECT_EQ(session->selectedText, QStringLiteral("copied"));
    EXPECT_EQ(session->focusedElement, nullptr);
    EXPECT_EQ(session->selectedRange, std::nullopt);
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::clipboard);
}

TEST_F(CaptureTest, copiesWhenTheFocusIsInAnotherApplication) {
    struct Process : RunningApplication {
        qint64 processId() const override { return 7; }
    };
    workspace.frontmost = std::make_shared<const Process>();
    setText(u"of another", CFRangeMake(0, 10));
    EXPECT_NE(capture()->focusedElement, nullptr);
    editor->process = 8;
    log->clear();
    copyYields(QStringLiteral("copied"));
    const auto session = capture();
    EXPECT_EQ(session->selectedText, QStringLiteral("copied"));
    EXPECT_EQ(session->focusedElement, nullptr);
    EXPECT_FALSE(log->contains(selectedText));
}

TEST_F(CaptureTest, copiesWhenTheFocusedElementIsNull) {
    server.focused = nullptr;
    copyYields(QStringLiteral("copied"));
    EXPECT_EQ(capture()->focusedElement, nullptr);
}

TEST_F(CaptureTest, copiesWhenNeitherTextIsUsable) {
    editor->give("AXSelectedText", doubles::makeData("rich"));
    editor->give("AXValue", doubles::makeString(u" \n"));
    editor->give("AXSelectedTextRange", doubles::makeRange(3, 6));
    copyYields(QStringLiteral("copied"));
    const auto session = capture();
    EXPECT_EQ(*log, beforeTheTexts + examination + QStringList({selectedText, wholeValue}) +
                        copyChord + copiedAndRestored + QStringList({range}));
    EXPECT_NE(session->focusedElement, nullptr);
    EXPECT_EQ(session->selectedRange, (TextRange{3, 6}));
}

TEST_F(CaptureTest, copiesWhenItsOwnPanelHasTheKeyboard) {
    editor->process = ::getpid();
    setText(u"an instruction typed into the panel");
    copyYields(QStringLiteral("copied"));
    const auto session = capture();
    EXPECT_EQ(session->selectedText, QStringLiteral("copied"));
    EXPECT_EQ(session->focusedElement, nullptr);
}

TEST_F(CaptureTest, aPasswordIsNotCaptured) {
    editor->give("AXSubrole", doubles::makeString(u"AXSecureTextField"));
    setText(u"secret", CFRangeMake(0, 6));
    EXPECT_EQ(failureOf([this] { capture(); }), AppFailure::Case::noSelectionFound);
    EXPECT_FALSE(log->contains(selectedText));
    EXPECT_FALSE(log->contains(wholeValue));
}

TEST_F(CaptureTest, aCopyThatDoesNotArriveFailsRestored) {
    server.focused = nullptr;
    EXPECT_EQ(failureOf([this] { capture(); }), AppFailure::Case::noSelectionFound);
    EXPECT_EQ(log->count(QStringLiteral("sleep 50")), 6);
    EXPECT_EQ(log->last(), QStringLiteral("pasteboard.writeItems 1"));
}

TEST_F(CaptureTest, withoutKeyEventsThePasteboardStaysUntouched) {
    server.focused = nullptr;
    for (bool *const creates : {&events.createsSources, &events.createsDown, &events.createsUp}) {
        *creates = false;
        EXPECT_EQ(failureOf([this] { capture(); }), AppFailure::Case::replacementFailed);
        *creates = true;
    }
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.clear")));
    EXPECT_TRUE(log->filter(QStringLiteral("CGEventPost")).isEmpty());
}

TEST_F(CaptureTest, withoutFrontmostApplicationNothingIsAsked) {
    workspace.frontmost = nullptr;
    EXPECT_EQ(failureOf([this] { capture(); }), AppFailure::Case::missingFrontmostApplication);
    EXPECT_EQ(*log, QStringList({QStringLiteral("frontmostApplication")}));
}

} // namespace
} // namespace quillmender
