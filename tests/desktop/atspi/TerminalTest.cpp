#include "desktop/atspi/AccessibleProgram.h"
#include "desktop/atspi/AtspiTest.h"
#include "desktop/harness/ClipboardOwner.h"

namespace quillmender::atspi {
namespace {

using harness::ClipboardOwner;

/// A terminal whose screen is on the bus.
class TerminalTest : public AtspiTest {
  protected:
    void SetUp() override {
        AtspiTest::SetUp();
        start();
    }

    void openTerminal(int selectionStart, int selectionEnd) {
        screen_.emplace(desktop(), QStringLiteral("$ one two"),
                        AccessibleProgram::Options{.isActive = true,
                                                   .fieldRole = ScriptedApplication::terminalRole,
                                                   .selectionStart = selectionStart,
                                                   .selectionEnd = selectionEnd});
        frontmost().pretend(screen_->pid());
    }

    std::optional<AccessibleProgram> screen_;
};

TEST_F(TerminalTest, TellsItsPrimarySelectionRatherThanItsColumns) {
    // Konsole counts columns of full lines, and tells a text that has shorter ones.
    openTerminal(3, 6);
    const ClipboardOwner primary(desktop().display(),
                                 ClipboardOwner::plainText(QStringLiteral("one")), "PRIMARY");
    waitForSelection(QStringLiteral("one"));
    EXPECT_EQ(record().role, FocusContext::Role::terminal);
}

TEST_F(TerminalTest, TellsWhatIsSelectedOnTheBusWithoutAPrimarySelection) {
    openTerminal(2, 5);
    waitForSelection(QStringLiteral("one"));
    EXPECT_EQ(record().role, FocusContext::Role::terminal);
}

TEST_F(TerminalTest, ScreenIsNoTextOfAField) {
    openTerminal(2, 2);
    const FocusReading reading = waitForFocus(FocusContext::Role::terminal);
    EXPECT_EQ(reading.selectedText, std::nullopt);
    EXPECT_EQ(reading.selectedRange, std::nullopt);
    EXPECT_EQ(reading.value, std::nullopt);
    EXPECT_EQ(selectedRange(reading.element), std::nullopt);
    const Replacement replaced = replace(reading.element, {2, 3}, QStringLiteral("eins"));
    EXPECT_EQ(replaced.outcome, Replacement::Outcome::refused);
    expectReasonWithout(replaced, {QStringLiteral("one"), QStringLiteral("eins")});
    EXPECT_EQ(select(reading.element, {2, 3}), PasteTarget::unknown);
}

} // namespace
} // namespace quillmender::atspi
