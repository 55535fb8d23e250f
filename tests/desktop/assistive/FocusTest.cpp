#include "desktop/assistive/Letter.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/SettingsForm.h"
#include "desktop/sessions/TextKeys.h"
#include "support/ProviderAnswers.h"

namespace quillmender {
namespace {

using harness::Accessible;
using harness::AccessibleState;
using harness::TestApplication;
using harness::waitUntil;
using test::ScriptedAnswer;

const QString instruction = QStringLiteral("a long instruction");

/// Somebody who has a keyboard only, and an assistive tool that sets the focus.
class FocusTest : public SessionFixture {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        start();
    }

    void openPanel() {
        editor_ = TestApplication::mousepad(desktop(), letter);
        const Accessible text = editor_->focusedText();
        waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
        selectByKeyboard(input(), letter, wrong);
        waitUntil([&] { return text.selectedText() == wrong; },
                  QStringLiteral("the word is selected"));
        pressHotKey();
        panel_ = waitForPanel(wrong);
    }

    void failLater() {
        const auto answer = ScriptedAnswer::http(500, test::errorBody(failureMessage));
        ScriptedAnswer held;
        held.hold();
        for (const auto &step : answer.steps())
            held.send(step.bytes);
        provider().setAnswer(held);
    }

    std::optional<Accessible> focus() {
        return desktop().accessible().find(program().pid(), [](const Accessible &widget) {
            // A dialog has the focus of what is in it, and a closed list of choices its choice;
            // an action's row has its buttons.
            return widget.hasState(AccessibleState::focused) &&
                   widget.roleName() != QStringLiteral("dialog") &&
                   (widget.roleName() != QStringLiteral("list item") ||
                    !widget.children().isEmpty());
        });
    }

    QString focusName() {
        const auto now = focus();
        return now ? now->name() : QString();
    }

    /// Focused, enabled, and in the part of the window that can be seen.
    void waitUntilFocused(const QString &name) {
        waitUntil(
            [&] {
                const auto now = focus();
                return now && now->name() == name && now->hasState(AccessibleState::enabled);
            },
            QStringLiteral("%1 has the focus").arg(name));
    }

    xcb_window_t panel() const { return panel_; }

  private:
    std::optional<TestApplication> editor_;
    xcb_window_t panel_ = XCB_WINDOW_NONE;
};

TEST_F(FocusTest, ReturnAfterAFailureKeepsThePanelAndTheInstruction) {
    openPanel();
    const Accessible field = desktop().accessible().waitFor(program().pid(), QStringLiteral("text"),
                                                            QStringLiteral("Generate From Prompt"));
    input().type(instruction);
    waitUntil([&] { return field.text() == instruction; }, QStringLiteral("it is typed"));
    tabTo(QStringLiteral("Generate"));
    failLater();
    input().chord({XK_Return});
    waitForRequest(1);
    waitUntil([&] { return panelShows(QStringLiteral("Generate from Prompt")); },
              QStringLiteral("the progress is shown"));
    // Impatience.
    for (const xcb_keysym_t key : {XK_Return, XK_space, XK_Escape})
        input().chord({key});
    EXPECT_EQ(focusName(), QStringLiteral("Generate"));
    provider().release();
    waitForPanel(failureMessage);
    // There is no room for both.
    waitUntilFocused(failureMessage);
    EXPECT_EQ(provider().requests().size(), 1U);

    // The same once more, after the one Return that once closed the panel.
    answerWith(QStringLiteral("receive"));
    input().chord({XK_Return});
    tabTo(QStringLiteral("Generate"));
    EXPECT_EQ(provider().requests().size(), 1U);
    input().chord({XK_Return});
    waitForRequest(2);
    EXPECT_TRUE(promptOf(provider().requests().back()).contains(instruction));
    waitUntilPanelIsGone();
}

TEST_F(FocusTest, AnActionKeepsTheFocusWhileItRunsAndAfterAFailure) {
    openPanel();
    tabTo(QStringLiteral("Simplify"));
    failLater();
    input().chord({XK_space});
    waitForRequest(1);
    waitUntil([&] { return panelShows(QStringLiteral("Simplify")); },
              QStringLiteral("the progress is shown"));
    input().chord({XK_Return});
    EXPECT_EQ(focusName(), QStringLiteral("Simplify"));
    provider().release();
    waitForPanel(failureMessage);
    waitUntilFocused(QStringLiteral("Simplify"));
    const Accessible close = button(QStringLiteral("Close"));
    EXPECT_FALSE(close.hasState(AccessibleState::focused));
    EXPECT_EQ(provider().requests().size(), 1U);
}

TEST_F(FocusTest, WhatAnAssistiveToolFocusesComesIntoView) {
    openPanel();
    const auto isInView = [&](const Accessible &control) {
        const QRect window = desktop().windows().geometry(panel());
        // Above the row of buttons at the end.
        const QRect close = button(QStringLiteral("Close")).extents();
        const QRect area(window.left(), window.top(), window.width(), close.top() - window.top());
        return area.contains(control.extents());
    };
    const auto editor = desktop().accessible().waitFor(program().pid(), QStringLiteral("text"),
                                                       QStringLiteral("Generate From Prompt"));
    const auto tile = desktop().accessible().waitFor(program().pid(), QStringLiteral("push button"),
                                                     QStringLiteral("Formalize"));
    EXPECT_FALSE(isInView(editor));
    tile.grabFocus();
    waitUntil([&] { return tile.hasState(AccessibleState::focused) && isInView(tile); },
              QStringLiteral("the tile is in view"));
    editor.grabFocus();
    waitUntil([&] { return editor.hasState(AccessibleState::focused) && isInView(editor); },
              QStringLiteral("the instruction is in view"));
    tile.grabFocus();
    waitUntil([&] { return tile.hasState(AccessibleState::focused) && isInView(tile); },
              QStringLiteral("the tile is in view again"));
}

TEST_F(FocusTest, RepeatedSpaceRemovesOneAction) {
    program().activateAction(QStringLiteral("settings"));
    const SettingsForm settings(desktop(), program().pid());
    const auto removeButtons = [&] {
        return desktop().accessible().findAll(program().pid(), [](const Accessible &widget) {
            return widget.name() == QStringLiteral("Remove") &&
                   widget.hasState(AccessibleState::visible);
        });
    };
    const auto before = removeButtons();
    ASSERT_GE(before.size(), 3);
    const QString title = before[1].description();
    before[1].grabFocus();
    waitUntil([&] { return before[1].hasState(AccessibleState::focused); },
              QStringLiteral("Remove has the focus"));
    for (int i = 0; i < 5; ++i)
        input().chord({XK_space});
    waitUntil([&] { return removeButtons().size() < before.size(); },
              QStringLiteral("an action is removed"));
    for (const xcb_keysym_t key : {XK_space, XK_Return, XK_space})
        input().chord({key});
    // Keys are taken in their order: once Tab has moved on, the others have had their effect.
    const QString place = focusName();
    input().chord({XK_Tab});
    waitUntilFocused(QStringLiteral("Edit"));
    EXPECT_EQ(removeButtons().size(), before.size() - 1);
    EXPECT_NE(place, title);
    EXPECT_EQ(focus()->description(), place);
}

} // namespace
} // namespace quillmender
