#include "desktop/harness/TestApplication.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include <QFile>

namespace quillmender {
namespace {

using harness::CompositorKind;
using harness::TestApplication;
using harness::waitUntil;

const QString wrong = QStringLiteral("recieve");
const QString notReplaced =
    QStringLiteral("Quillmender could not replace the selected text back in the source app.");

/// A terminal of Wayland's own, in which the first word is selected.
class WaylandTerminalTest : public WaylandSessionFixture,
                            public testing::WithParamInterface<CompositorKind> {
  protected:
    CompositorKind kind() const override { return GetParam(); }

    QString path(const char *name) {
        return desktop().folders().home() + QLatin1Char('/') + QLatin1String(name);
    }
    bool exists(const char *name) { return QFile::exists(path(name)); }
    QByteArray contents(const char *name) {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The command shows the word at the beginning of its row; rows are counted from 0.
    void openTerminal(const QString &command, int row) {
        start();
        // In the corner of the screen, wherever this compositor puts windows.
        terminal_.emplace(desktop(), QStringLiteral("foot"),
                          QStringList{QStringLiteral("--fullscreen"),
                                      QStringLiteral("--override=font=monospace:size=12"),
                                      QStringLiteral("--override=pad=0x0"), QStringLiteral("sh"),
                                      QStringLiteral("-c"), command});
        waitUntil([this] { return exists("ready"); }, QStringLiteral("the shell is there"));
        waitUntil(
            [&] {
                // Within the row, whatever its height.
                constexpr int rowHeight = 18;
                desktop().input().doubleClick(QPoint(rowHeight, row * rowHeight + rowHeight / 2));
                return harness::becomesTrue([this] { return desktop().selectedText() == wrong; },
                                            std::chrono::seconds(2));
            },
            QStringLiteral("the word is selected"));
    }

    void answerTheWordWith(const QString &answer) {
        answerWith(answer);
        pressHotKey();
        waitForPanel(wrong);
        click(QStringLiteral("Fix My Grammar"));
        waitForRequest();
    }

    /// The panel says so, and the clipboard is as it was.
    void waitUntilRefused() {
        waitUntil([this] { return panelShows(notReplaced); },
                  QStringLiteral("the failure is shown"));
        expectClipboardUntouched();
        click(QStringLiteral("Close"));
        waitUntilPanelIsGone();
    }

    /// The shell has done everything that was on its line and before it.
    void runInShell(const QString &command, const char *madeByIt) {
        terminal_->activate();
        desktop().input().type(command + QLatin1Char('\n'));
        waitUntil([&] { return exists(madeByIt); }, QStringLiteral("the shell has run ") + command);
    }

    void TearDown() override {
        WaylandSessionFixture::TearDown();
        terminal_.reset();
    }

    std::optional<TestApplication> terminal_;
};

TEST_P(WaylandTerminalTest, AnAnswerOfSeveralLinesIsNotPastedIntoAShell) {
    // It asks for the marks around a paste; whether it heeds them is up to its user.
    openTerminal(QStringLiteral("printf 'recieve\\n'; touch ready; "
                                "exec bash --norc --noprofile -i"),
                 0);
    answerTheWordWith(QStringLiteral("touch first\ntouch second\n"));
    waitUntilRefused();
    EXPECT_EQ(desktop().selectedText(), wrong);
    runInShell(QStringLiteral("touch done"), "done");
    EXPECT_FALSE(exists("first"));
    EXPECT_FALSE(exists("second"));
}

TEST_P(WaylandTerminalTest, AnAnswerOfOneLineWaitsForItsUsersEnter) {
    openTerminal(QStringLiteral("printf 'recieve\\n'; touch ready; exec dash -i"), 0);
    answerTheWordWith(QStringLiteral("\x1b[201~touch pasted;\r\n\n"));
    waitUntilPanelIsGone();
    waitUntilWritten();
    expectClipboardUntouched();
    EXPECT_EQ(desktop().selectedText(), wrong) << "what was selected is so again";
    EXPECT_FALSE(exists("pasted"));
    // What stands on the line is changed, so that it is seen that it was there, and not run.
    terminal_->activate();
    desktop().input().chord({XK_Control_L, XK_u});
    runInShell(QStringLiteral("touch done"), "done");
    EXPECT_FALSE(exists("pasted"));
}

// Where the compositor tells the process of a terminal.
TEST_P(WaylandTerminalTest, AnEditorGetsAllLines) {
    openTerminal(QStringLiteral("printf recieve > text; touch ready; "
                                "exec nano --ignorercfiles --nonewlines text"),
                 1);
    answerTheWordWith(QStringLiteral("one\n\ttwo"));
    if (kind() == CompositorKind::labwc) {
        waitUntilRefused();
        return;
    }
    waitUntilPanelIsGone();
    waitUntilWritten();
    expectClipboardUntouched();
    terminal_->activate();
    waitUntil(
        [this] {
            desktop().input().chord({XK_Control_L, XK_s});
            return harness::becomesTrue([this] { return contents("text") == "one\n\ttworecieve"; },
                                        std::chrono::seconds(2));
        },
        QStringLiteral("the editor has the lines"));
}

INSTANTIATE_TEST_SUITE_P(On, WaylandTerminalTest, harness::everyCompositor(),
                         harness::compositorName);

} // namespace
} // namespace quillmender
