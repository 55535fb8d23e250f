#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TerminalFixture.h"
#include "desktop/x11/TestRequestor.h"

namespace quillmender::x11 {

namespace {

using namespace std::chrono_literals;

/// A terminal that writes what is pasted into it to a file, line by line.
class TerminalTest : public TerminalFixture {
  protected:
    void SetUp() override {
        TerminalFixture::SetUp();
        start(QStringLiteral("touch ready; exec cat > typed"));
    }
};

TEST_F(TerminalTest, NeverTypesCopyIntoATerminal) {
    EXPECT_TRUE(services_->frontmost->isTerminal());
    const ChordResult copied = type(Chord::copy, terminal_);
    EXPECT_EQ(copied.outcome, Outcome::withheld);
    EXPECT_EQ(copied.reason, QStringLiteral("the copy chord is an interrupt in a terminal"));
}

TEST_F(TerminalTest, PastesAndPutsBothSelectionsBack) {
    ScriptedOwner clipboard(server_.display());
    clipboard.offer("text/html", {clipboard.atom("text/html"), 8, "<b>user's</b>"});
    ScriptedOwner primary(server_.display(), "PRIMARY");
    primary.offer("UTF8_STRING", {primary.atom("UTF8_STRING"), 8, "user's selection"});

    const auto before = wait(pasteboard().items());
    ASSERT_EQ(paste(QStringLiteral("pasted text\n")), Outcome::typed) << reason_;
    EXPECT_TRUE(wait(lent_->wasRead(20s)));
    pasteboard().replaceContents(before);
    tap({XKB_KEY_Return});
    EXPECT_TRUE(waitFor([&] { return contents("typed") == "pasted text\n"; }))
        << contents("typed").toStdString();

    TestRequestor fromClipboard(*peer_);
    EXPECT_EQ(fromClipboard.fetch("text/html")->value, "<b>user's</b>");
    TestRequestor fromPrimary(*peer_, "PRIMARY");
    EXPECT_EQ(fromPrimary.fetch("UTF8_STRING")->value, "user's selection");
}

TEST_F(TerminalTest, LeavesPrimaryToTheUserWhoSelectedSomethingElseMeanwhile) {
    ASSERT_EQ(paste(QStringLiteral("text")), Outcome::typed) << reason_;
    const ScriptedOwner newer(server_.display(), "PRIMARY");
    finishTurn();
    pasteboard().replaceContents({});
    finishTurn();
    EXPECT_NE(ownerOf("PRIMARY"), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_NE(ownerOf("PRIMARY"), services_->connection->window());
}

TEST_F(TerminalTest, ReadsTheSelectionOfTheTerminalAlone) {
    ScriptedOwner other(server_.display(), "PRIMARY");
    other.offer("UTF8_STRING", {other.atom("UTF8_STRING"), 8, "of another program"});
    EXPECT_EQ(wait(services_->frontmost->primarySelection()), std::nullopt);
    // Typed into the terminal, echoed, then selected with a double click.
    tap({XKB_KEY_w, XKB_KEY_o, XKB_KEY_r, XKB_KEY_d});
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

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
