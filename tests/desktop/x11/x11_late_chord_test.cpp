#include "desktop/x11/HangingWindow.h"
#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/X11Test.h"

namespace quillmender::x11 {

namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

/// An application that hangs, and comes to its chord when the program has long moved on.
class LateChordTest : public X11Test {
  protected:
    void SetUp() override {
        X11Test::SetUp();
        user_ = std::make_unique<ScriptedOwner>(server_.display());
        user_->offer("UTF8_STRING", text("the user's"));
        window_ = std::make_unique<HangingWindow>(*peer_);
        window_->map();
        ASSERT_TRUE(waitFor([this] { return window_->isViewable(); }));
        window_->setFocus();
        ASSERT_TRUE(waitFor([this] { return window_->hasFocus(); }));
    }

    X11Property text(const QByteArray &bytes) { return {peer_->atom("UTF8_STRING"), 8, bytes}; }

    RunningApplicationRef application() const {
        return std::make_shared<X11RunningApplication>(window_->id(), 0);
    }

    Outcome type(Chord chord) {
        if (chord == Chord::paste)
            lent_ = lend(QStringLiteral("answer"), application());
        const ChordResult result = X11Test::type(chord, application(), lent_);
        reason_ = result.reason.toStdString();
        return result.outcome;
    }

    /// The application hangs from just before the keys on, which it has said it would attend to.
    void typeWhileItHangs(Chord chord) {
        beforeTheKey([this] { window_->hang(); });
        EXPECT_EQ(type(chord), Outcome::typed) << reason_;
    }

    /// The program copies, and puts back what it had read before.
    void copyAndRestore(const QList<PasteboardItem> &items) {
        typeWhileItHangs(Chord::copy);
        pasteboard().replaceContents(items);
        finishTurn();
    }

    /// Everything that was sent up to now has been handled by the program.
    void settle() {
        ASSERT_TRUE(waitFor([this] {
            return services_->chordWatch->pending(Chord::copy) == XCB_WINDOW_NONE &&
                   services_->chordWatch->pending(Chord::paste) == XCB_WINDOW_NONE;
        }));
    }

    xcb_window_t program() const { return services_->connection->window(); }

    std::unique_ptr<ScriptedOwner> user_;
    std::unique_ptr<HangingWindow> window_;
    std::shared_ptr<X11LentText> lent_;
    std::string reason_;
};

TEST_F(LateChordTest, NoChordIsTypedIntoAWindowThatHangs) {
    window_->hang();
    for (const Chord chord : {Chord::copy, Chord::paste}) {
        EXPECT_EQ(type(chord), Outcome::withheld);
        EXPECT_THAT(reason_, testing::EndsWith(" does not attend to its events"));
    }
    EXPECT_THAT(window_->keys(), IsEmpty());
    window_->attend();
    EXPECT_EQ(type(Chord::paste), Outcome::typed) << reason_;
}

TEST_F(LateChordTest, LateCopyIsUndone) {
    const auto items = wait(pasteboard().items());
    copyAndRestore(items);
    ASSERT_EQ(ownerOf("CLIPBOARD"), user_->connection().window());

    ScriptedOwner late(server_.display());
    late.offer("UTF8_STRING", text("selected"));
    EXPECT_TRUE(waitFor([this] { return ownerOf("CLIPBOARD") == program(); }));
    TestRequestor reader(*peer_);
    EXPECT_EQ(reader.fetch("UTF8_STRING"), text("the user's"));

    // What it copies from now on is the user's own doing.
    window_->attend();
    settle();
    late.own();
    finishTurn();
    EXPECT_EQ(reader.fetch("UTF8_STRING"), text("selected"));
}

TEST_F(LateChordTest, LateCopyLeavesAnEmptyClipboardEmpty) {
    user_.reset();
    ASSERT_TRUE(waitFor([this] { return ownerOf("CLIPBOARD") == XCB_WINDOW_NONE; }));
    copyAndRestore({});
    const ScriptedOwner late(server_.display());
    EXPECT_TRUE(waitFor([this] { return ownerOf("CLIPBOARD") == XCB_WINDOW_NONE; }));
}

TEST_F(LateChordTest, AfterTheApplicationIsGoneEveryCopyIsTheUsers) {
    copyAndRestore(wait(pasteboard().items()));
    window_.reset();
    settle();
    ScriptedOwner next(server_.display());
    next.offer("UTF8_STRING", text("copied"));
    finishTurn();
    TestRequestor reader(*peer_);
    EXPECT_EQ(reader.fetch("UTF8_STRING"), text("copied"));
}

TEST_F(LateChordTest, LatePasteGetsNothing) {
    const auto items = wait(pasteboard().items());
    typeWhileItHangs(Chord::paste);
    EXPECT_FALSE(wait(lent_->wasRead(50ms)));
    pasteboard().replaceContents(items);

    TestRequestor reader(*peer_);
    EXPECT_EQ(reader.fetch("UTF8_STRING"), std::nullopt);
    EXPECT_EQ(reader.fetch("TARGETS"), std::nullopt);
    const auto elsewhere = server_.start(QStringLiteral("xclip"),
                                         {QStringLiteral("-o"), QStringLiteral("-selection"),
                                          QStringLiteral("clipboard"), QStringLiteral("-target"),
                                          QStringLiteral("UTF8_STRING")});
    EXPECT_TRUE(waitFor([&] { return elsewhere->state() == QProcess::NotRunning; }));
    EXPECT_EQ(elsewhere->readAllStandardOutput(), "the user's") << "to others it is there";

    window_->answerOnce();
    EXPECT_TRUE(waitFor([this] { return window_->unanswered() == 1; }));
    EXPECT_EQ(reader.fetch("UTF8_STRING"), std::nullopt) << "one answer may precede the keys";
    window_->attend();
    settle();
    EXPECT_EQ(reader.fetch("UTF8_STRING"), std::nullopt) << "it goes on from target to target";
    EXPECT_TRUE(waitFor([&] { return reader.fetch("UTF8_STRING") == text("the user's"); }));
}

TEST_F(LateChordTest, LatePasteGetsNothingWhenNobodyWaitedForIt) {
    const auto items = wait(pasteboard().items());
    typeWhileItHangs(Chord::paste);
    pasteboard().replaceContents(items);
    TestRequestor reader(*peer_);
    EXPECT_EQ(reader.fetch("UTF8_STRING"), std::nullopt);
    EXPECT_FALSE(wait(lent_->wasRead(20s)));
    // The next paste into it is one that it may read.
    window_->attend();
    focus_->relay = nullptr;
    EXPECT_EQ(type(Chord::paste), Outcome::typed) << reason_;
    EXPECT_EQ(reader.fetch("UTF8_STRING"), text("answer"));
}

TEST_F(LateChordTest, WhatWasReadBeforeTheKeysIsPastedUnlessTheApplicationHangs) {
    for (const bool hangs : {false, true}) {
        lent_ = lend(QStringLiteral("answer"), application());
        TestRequestor reader(*peer_);
        EXPECT_EQ(reader.fetch("UTF8_STRING"), text("answer"));
        if (hangs)
            beforeTheKey([this] { window_->hang(); });
        EXPECT_EQ(X11Test::type(Chord::paste, application(), lent_).outcome, Outcome::typed);
        if (!hangs)
            settle();
        EXPECT_NE(wait(lent_->wasRead(50ms)), hangs);
    }
}

TEST_F(LateChordTest, PasteThatTheApplicationIgnoresIsToldOf) {
    EXPECT_EQ(type(Chord::paste), Outcome::typed) << reason_;
    settle();
    EXPECT_FALSE(wait(lent_->wasRead(50ms)));
    TestRequestor reader(*peer_);
    EXPECT_EQ(reader.fetch("UTF8_STRING"), text("answer")) << "it is not refused, though";
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
