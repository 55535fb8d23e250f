#include "FocusedTextTest.h"
#include "fakes/FakeChords.h"
#include "fakes/FakeClock.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
#include "selection/SelectionController.h"

namespace quillmender {
namespace {

/// The roads of a text that cross the border more than once, with the focused text of the system.
/// `log` has the calls of the frameworks and those of the fakes in their order.
class SelectionTest : public FocusedTextTest {
  protected:
    SelectionTest() {
        doubles::CallLog::shared().onCall = [log = log](const std::string &call) {
            log->append(QString::fromStdString(call));
        };
        PasteboardItem item;
        item.setData(QStringLiteral("text/plain"), "the user's own");
        pasteboard.contents = {item};
        workspace.frontmost = application;
        chords.onTyped = [this](Chord chord) {
            if (chord == Chord::copy)
                pasteboard.copyFromElsewhere(QStringLiteral(" copied "));
        };
    }
    ~SelectionTest() override { doubles::CallLog::shared().onCall = nullptr; }

    SelectionSessionRef capture() { return fakes::await(controller.captureSelection()); }

    bool write(const SelectionSessionRef &session, const QString &text) {
        log->clear();
        return fakes::await(controller.replaceViaAccessibility(session, text));
    }

    const QStringList snapshot = {
        QStringLiteral("frontmostApplication"),
        QStringLiteral("pasteboard.itemsWithin 1000"),
        QStringLiteral("pasteboard.changeCount"),
    };
    const QStringList search = {
        QStringLiteral("AXUIElementCreateSystemWide"),
        QStringLiteral("AXUIElementCopyAttributeValue system-wide AXFocusedUIElement"),
        QStringLiteral("AXUIElementGetPid editor"),
    };
    const QStringList subrole = {QStringLiteral("AXUIElementCopyAttributeValue editor AXSubrole")};
    const QStringList texts = {
        QStringLiteral("AXUIElementCopyAttributeValue editor AXSelectedText"),
        QStringLiteral("AXUIElementCopyAttributeValue editor AXValue"),
    };
    const QStringList range = {
        QStringLiteral("AXUIElementCopyAttributeValue editor AXSelectedTextRange")};
    const QStringList activation = {
        QStringLiteral("activate source"),
        QStringLiteral("sleep 120"),
    };
    const QStringList copyAndRestore = {
        QStringLiteral("type copy"),
        QStringLiteral("sleep 50"),
        QStringLiteral("pasteboard.changeCount"),
        QStringLiteral("pasteboard.string"),
        QStringLiteral("pasteboard.replaceContents 1"),
    };

    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeClock clock{log};
    fakes::FakePasteboard pasteboard{log};
    fakes::FakeWorkspace workspace{log};
    fakes::FakeChords chords{log};
    PasteboardManager manager{pasteboard, chords};
    SelectionController controller{manager, focusedText, workspace, clock};
};

TEST_F(SelectionTest, AFieldIsCapturedAndReplacedWhole) {
    setText(u"  \U0001F642lo  ");
    const auto session = capture();
    EXPECT_EQ(*log, snapshot + search + subrole + texts);
    EXPECT_EQ(session->selectedText, QStringLiteral("  \U0001F642lo  "));
    EXPECT_EQ(session->selectedRange, (TextRange{0, 8}));
    EXPECT_EQ(session->captureScope, CaptureScope::fullField);
    EXPECT_TRUE(write(session, QStringLiteral("new")));
    EXPECT_EQ(value(), "new");
}

TEST_F(SelectionTest, ACopiedTextOfAKnownRangeIsWrittenAndNotPasted) {
    setText(u" \n ");
    editor->give("AXSelectedTextRange", doubles::makeRange(1, 1));
    const auto session = capture();
    EXPECT_EQ(*log, snapshot + search + subrole + texts + activation + copyAndRestore + range);
    EXPECT_EQ(session->selectedText, QStringLiteral("copied"));
    EXPECT_EQ(session->selectedRange, (TextRange{1, 1}));
    EXPECT_EQ(session->acquisitionMethod, SelectionAcquisitionMethod::clipboard);
    EXPECT_TRUE(write(session, QStringLiteral("new")));
    EXPECT_EQ(value(), " new ");
}

TEST_F(SelectionTest, ASelectionOfAnUnknownRangeIsLeftToThePaste) {
    setText(u"word", CFRangeMake(0, 4));
    editor->failReading("AXSelectedTextRange", kAXErrorAttributeUnsupported);
    const auto session = capture();
    EXPECT_EQ(session->selectedText, QStringLiteral("word"));
    EXPECT_EQ(session->selectedRange, std::nullopt);
    EXPECT_FALSE(write(session, QStringLiteral("new")));
    EXPECT_TRUE(log->isEmpty());
    EXPECT_EQ(value(), "word");
}

TEST_F(SelectionTest, TheFocusIsLookedForAgainOnceTheApplicationIsInFront) {
    setText(u"word", CFRangeMake(0, 4));
    editor->process = 8;
    clock.duringSleep = [this](int) { editor->process = 7; };
    const auto session = capture();
    EXPECT_EQ(*log, snapshot + search + activation + search + subrole + texts.first(1) + range +
                        copyAndRestore + range);
    EXPECT_NE(session->focusedElement, nullptr);
    EXPECT_EQ(session->selectedRange, (TextRange{0, 4}));
}

} // namespace
} // namespace quillmender
