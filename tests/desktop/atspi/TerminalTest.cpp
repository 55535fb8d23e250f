#include "desktop/atspi/AtspiTest.h"
#include "desktop/atspi/ScriptedField.h"
#include "desktop/harness/ClipboardOwner.h"

namespace quillmender {
namespace {

using harness::ClipboardOwner;
using harness::waitUntil;

/// A terminal whose screen is on the bus.
class TerminalTest : public AtspiTest {
  protected:
    void SetUp() override {
        AtspiTest::SetUp();
        start();
        waitUntil([&] { return accessibility().isProcessTrusted(); },
                  QStringLiteral("the bus is there"));
        screen_.emplace(desktop().accessibilityBus()->address(), QStringLiteral("$ one two"));
    }

    std::optional<QString> selectedText() {
        const ObjectRef object{screen_->service(), ScriptedField::path()};
        return text(
            std::make_shared<const TerminalElement>(nullptr, object, std::make_shared<Budget>()),
            attribute::selectedText);
    }

    std::optional<ScriptedField> screen_;
};

TEST_F(TerminalTest, TellsItsPrimarySelectionRatherThanItsColumns) {
    // Konsole counts columns of full lines, and tells a text that has shorter ones.
    screen_->selectionStart = 3;
    screen_->selectionEnd = 6;
    const ClipboardOwner primary(desktop().display(),
                                 ClipboardOwner::plainText(QStringLiteral("one")), "PRIMARY");
    EXPECT_EQ(selectedText(), QStringLiteral("one"));
}

TEST_F(TerminalTest, TellsWhatIsSelectedOnTheBusWithoutAPrimarySelection) {
    screen_->selectionStart = 2;
    screen_->selectionEnd = 5;
    EXPECT_EQ(selectedText(), QStringLiteral("one"));
    screen_->selectionEnd = 2;
    EXPECT_EQ(selectedText(), std::nullopt);
}

} // namespace
} // namespace quillmender
