#include "desktop/assistive/Letter.h"
#include "desktop/assistive/Walker.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/SettingsForm.h"
#include "support/ProviderAnswers.h"

#include <iostream>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::AccessibleState;
using harness::TestApplication;
using harness::waitUntil;
using test::ScriptedAnswer;

int roundsWanted() {
    bool isNumber = false;
    const int wanted = qEnvironmentVariableIntValue("QUILLMENDER_WALK_SESSIONS", &isNumber);
    return isNumber && wanted > 0 ? wanted : 20;
}

/// Every window of the program is opened, used and closed under the eyes of assistive tools, again
/// and again.
class WalkTest : public SessionFixture {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        start();
        editor_ = TestApplication::mousepad(desktop(), letter);
        text_ = editor_->focusedText();
        waitUntil([&] { return text_->text() == letter; }, QStringLiteral("the letter is open"));
        // The toolkit says there which questions came too late.
        allowLog();
        for (int i = 0; i < 3; ++i) {
            walkers_.push_back(std::make_unique<Walker>(desktop(), program().pid(),
                                                        QStringLiteral("walker-%1").arg(i)));
        }
    }

    void TearDown() override {
        walkers_.clear();
        SessionFixture::TearDown();
    }

    bool isAlive() { return program().process().isRunning(); }

    /// A word of the letter to a failing provider, then to one that answers.
    void runSession(int round) {
        text_->setText(letter);
        waitUntil([&] { return text_->text() == letter; }, QStringLiteral("the letter is there"));
        editor_->activate();
        pressHotKey();
        waitForPanel();
        provider().setAnswer(ScriptedAnswer::http(500, test::errorBody(failureMessage)));
        press(QStringLiteral("Formalize"));
        waitUntil([&] { return !isAlive() || panelShows(failureMessage); },
                  QStringLiteral("the failure is shown"));
        const QString answer = QStringLiteral("Answer %1").arg(round);
        answerWith(answer);
        press(QStringLiteral("Simplify"));
        waitUntil([&] { return !isAlive() || text_->text() == answer; },
                  QStringLiteral("the answer is there"));
        waitUntilPanelIsGone();
    }

    /// A sheet, a list that drops down, and a window that closes over both.
    void useSettings() {
        program().activateAction(QStringLiteral("settings"));
        SettingsForm settings(desktop(), program().pid());
        press(QStringLiteral("New Action"));
        waitUntil(
            [&] {
                return !isAlive() ||
                       desktop().windows().titled(QStringLiteral("New Action")) != XCB_WINDOW_NONE;
            },
            QStringLiteral("the sheet is shown"));
        press(QStringLiteral("Cancel"));
        waitUntil(
            [&] {
                return desktop().windows().titled(QStringLiteral("New Action")) == XCB_WINDOW_NONE;
            },
            QStringLiteral("the sheet is gone"));
        const auto choice =
            desktop().accessible().find(program().pid(), QStringLiteral("combo box"));
        if (choice)
            choice->doAction();
        settings.close();
        program().activateAction(QStringLiteral("about"));
        xcb_window_t about = XCB_WINDOW_NONE;
        waitUntil(
            [&] {
                about = desktop().windows().titled(QStringLiteral("About Quillmender"));
                return about != XCB_WINDOW_NONE || !isAlive();
            },
            QStringLiteral("the about window is shown"));
        desktop().windows().close(about);
    }

    /// As an assistive tool presses it, in view or not.
    void press(const QString &title) {
        const auto isIt = [&](const Accessible &widget) {
            return widget.name() == title && widget.hasState(AccessibleState::visible) &&
                   widget.hasState(AccessibleState::enabled) &&
                   widget.roleName() == QStringLiteral("push button");
        };
        std::optional<Accessible> found;
        waitUntil(
            [&] {
                found = desktop().accessible().find(program().pid(), isIt);
                return found || !isAlive();
            },
            QStringLiteral("%1 can be pressed").arg(title));
        if (found)
            found->doAction();
    }

    const std::vector<std::unique_ptr<Walker>> &walkers() const { return walkers_; }

  private:
    std::optional<TestApplication> editor_;
    std::optional<Accessible> text_;
    std::vector<std::unique_ptr<Walker>> walkers_;
};

TEST_F(WalkTest, NeverEndsTheProgram) {
    const int rounds = roundsWanted();
    for (int round = 0; round < rounds && isAlive(); ++round) {
        SCOPED_TRACE(round);
        runSession(round);
        if (isAlive())
            useSettings();
    }
    ASSERT_TRUE(isAlive());
    for (const auto &walker : walkers()) {
        EXPECT_TRUE(walker->isRunning());
        const QList<int> walks = walker->walks();
        ASSERT_FALSE(walks.isEmpty());
        constexpr int panelAndSettings = 100;
        EXPECT_GE(*std::ranges::max_element(walks), panelAndSettings);
        std::cout << walks.size() << " walks\n";
    }
    program().activateAction(QStringLiteral("quit"));
    waitUntil([&] { return !isAlive(); }, QStringLiteral("the program has ended"));
    EXPECT_EQ(program().process().exitCode(), 0);
}

} // namespace
} // namespace quillmender
