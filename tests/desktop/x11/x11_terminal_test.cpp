#include "desktop/x11/KeyTyper.h"
#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/X11Test.h"

#include <QFile>
#include <QTemporaryDir>

namespace quillmender {

namespace {

using namespace std::chrono_literals;

/// A real terminal that writes what is pasted into it to a file.
class TerminalTest : public X11Test {
  protected:
    ~TerminalTest() override {
        for (auto &program : {xterm_.get(), windowManager_.get()}) {
            if (program == nullptr)
                continue;
            program->kill();
            program->waitForFinished(5000);
        }
    }

    void SetUp() override {
        X11Test::SetUp();
        windowManager_ = startWindowManager();
        output_ = folder_.filePath(QStringLiteral("typed"));
        xterm_ = server_.start(QStringLiteral("xterm"),
                               {QStringLiteral("-e"), QStringLiteral("sh"), QStringLiteral("-c"),
                                QStringLiteral("cat > %1").arg(output_)});
        ASSERT_TRUE(waitFor([this] {
            return services_->frontmost->processId() == xterm_->processId() &&
                   QFile::exists(output_);
        }));
        terminal_ = services_->workspace->frontmostApplication();
    }

    QByteArray typed() const {
        QFile file(output_);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder_;
    QString output_;
    std::unique_ptr<QProcess> windowManager_;
    std::unique_ptr<QProcess> xterm_;
    RunningApplicationRef terminal_;
};

TEST_F(TerminalTest, NeverTypesCopyIntoATerminal) {
    EXPECT_TRUE(services_->frontmost->isTerminal());
    EXPECT_EQ(wait(services_->keyEvents->prepareChord(terminal_, Chord::copy, focus_)),
              ChordReadiness::withheld);
}

TEST_F(TerminalTest, PastesAndPutsBothSelectionsBack) {
    ScriptedOwner clipboard(server_.display());
    clipboard.offer("text/html", {clipboard.atom("text/html"), 8, "<b>user's</b>"});
    ScriptedOwner primary(server_.display(), "PRIMARY");
    primary.offer("UTF8_STRING", {primary.atom("UTF8_STRING"), 8, "user's selection"});

    const auto before = wait(pasteboard().items());
    pasteboard().clearContents();
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("pasted text\n")));
    ASSERT_EQ(wait(services_->keyEvents->prepareChord(terminal_, Chord::paste, focus_)),
              ChordReadiness::ready);
    const auto source = services_->keyEvents->createSource(combinedSessionState);
    for (const bool isDown : {true, false}) {
        const auto event = services_->keyEvents->createKeyboardEvent(source, keycode::v, isDown);
        services_->keyEvents->setFlags(event, commandFlag);
        services_->keyEvents->post(hidEventTap, event);
    }
    QCoro::waitFor(pasteboard().stringWasRead(20s));
    pasteboard().clearContents();
    ASSERT_TRUE(pasteboard().writeItems(before));
    EXPECT_TRUE(waitFor([&] { return typed() == "pasted text\n"; })) << typed().toStdString();

    TestRequestor fromClipboard(*peer_);
    EXPECT_EQ(fromClipboard.fetch("text/html")->value, "<b>user's</b>");
    TestRequestor fromPrimary(*peer_, "PRIMARY");
    EXPECT_EQ(fromPrimary.fetch("UTF8_STRING")->value, "user's selection");
}

TEST_F(TerminalTest, LeavesPrimaryToTheUserWhoSelectedSomethingElseMeanwhile) {
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
    ASSERT_EQ(wait(services_->keyEvents->prepareChord(terminal_, Chord::paste, focus_)),
              ChordReadiness::ready);
    const ScriptedOwner newer(server_.display(), "PRIMARY");
    finishTurn();
    pasteboard().clearContents();
    finishTurn();
    EXPECT_NE(ownerOf("PRIMARY"), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_NE(ownerOf("PRIMARY"), services_->connection->window());
}

TEST_F(TerminalTest, ReadsTheSelectionOfTheTerminalAlone) {
    ScriptedOwner other(server_.display(), "PRIMARY");
    other.offer("UTF8_STRING", {other.atom("UTF8_STRING"), 8, "of another program"});
    EXPECT_EQ(wait(services_->frontmost->primarySelection()), std::nullopt);
    // Typed into the terminal, echoed, then selected with a double click.
    KeyTyper typer(*peer_);
    for (const auto symbol : {XKB_KEY_w, XKB_KEY_o, XKB_KEY_r, XKB_KEY_d})
        typer.tap(static_cast<xkb_keysym_t>(symbol));
    const auto frame = services_->workspace->windowFrame(terminal_);
    ASSERT_TRUE(frame.has_value());
    const auto select = [&] {
        xcb_warp_pointer(peer_->xcb(), XCB_WINDOW_NONE, peer_->root(), 0, 0, 0, 0,
                         static_cast<qint16>(frame->x + 12), static_cast<qint16>(frame->y + 8));
        for (int i = 0; i < 4; ++i)
            xcb_test_fake_input(peer_->xcb(), i % 2 == 0 ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, 1,
                                XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
        peer_->serverTime();
    };
    EXPECT_TRUE(waitFor([&] {
        select();
        return wait(services_->frontmost->primarySelection()) == QStringLiteral("word");
    }));
}

} // namespace

} // namespace quillmender

int main(int argc, char **argv) {
    return quillmender::runX11Tests(argc, argv);
}
