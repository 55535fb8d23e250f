#include "desktop/x11/KeyTyper.h"
#include "desktop/x11/TestWindow.h"
#include "desktop/x11/X11Test.h"
#include "platform/Clock.h"

namespace quillmender::x11 {

namespace {

using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class ChordsTest : public X11Test {
  protected:
    void SetUp() override {
        X11Test::SetUp();
        window_ = std::make_unique<TestWindow>(*peer_);
        typer_ = std::make_unique<KeyTyper>(*peer_);
        window_->map();
        ASSERT_TRUE(waitFor([this] { return window_->isViewable(); }));
        window_->setFocus();
        ASSERT_TRUE(waitFor([this] { return window_->hasFocus(); }));
    }

    RunningApplicationRef application() const {
        return std::make_shared<X11RunningApplication>(window_->id(), 0);
    }

    /// A paste is of a text that is lent for it.
    Outcome type(Chord chord) {
        LentTextRef text;
        if (chord == Chord::paste)
            text = lend(QStringLiteral("text"), application());
        const ChordResult result = X11Test::type(chord, application(), text);
        reason_ = result.reason.toStdString();
        EXPECT_EQ(reason_.empty(), result.outcome == Outcome::typed);
        return result.outcome;
    }

    /// The last four key events are the chord and nothing else, with this modifier alone.
    void expectChord(xkb_keysym_t modifier, quint16 state, xkb_keysym_t symbol) {
        const auto isComplete = [&] {
            const auto &keys = window_->keys();
            const std::size_t size = keys.size();
            return size >= seen_ + 4 && keys[size - 4].isDown && keys[size - 3].isDown &&
                   !keys[size - 2].isDown && !keys[size - 1].isDown;
        };
        ASSERT_TRUE(waitFor(isComplete));
        seen_ = window_->keys().size();
        const std::vector<TestWindow::Key> last(window_->keys().end() - 4, window_->keys().end());
        const quint16 locks = XCB_MOD_MASK_LOCK | services_->keymap->modifierOf(XKB_KEY_Num_Lock) |
                              services_->keymap->modifierOf(XKB_KEY_Scroll_Lock);
        const std::array expected{
            std::pair{typer_->key(modifier), quint16{0}}, std::pair{typer_->key(symbol), state},
            std::pair{typer_->key(symbol), state}, std::pair{typer_->key(modifier), state}};
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(last[i].isDown, i < 2) << i;
            EXPECT_EQ(last[i].code, expected[i].first) << i;
            EXPECT_EQ(last[i].state & 0xff & ~locks, expected[i].second) << i;
        }
    }

    /// One key that goes down and up with these modifiers, and nothing else.
    void expectTap(xkb_keysym_t symbol, quint16 state) {
        ASSERT_TRUE(waitFor([&] { return window_->keys().size() >= seen_ + 2; }));
        services_->connection->serverTime();
        finishTurn();
        ASSERT_THAT(window_->keys(), SizeIs(seen_ + 2));
        for (const bool isDown : {true, false}) {
            const TestWindow::Key &key = window_->keys()[seen_++];
            EXPECT_EQ(key.isDown, isDown);
            EXPECT_EQ(key.code, typer_->key(symbol));
            EXPECT_EQ(key.state & 0xff, state);
        }
    }

    /// The application's keys take a relay from now on, which goes as the turns say.
    ScriptedRelay &relay(const QList<ScriptedRelay::Turn> &turns) {
        const auto relay = std::make_shared<ScriptedRelay>(turns);
        focus_->relay = relay;
        return *relay;
    }

    /// A turn that answers when so many keys have reached the window.
    ScriptedRelay::Turn whenItHas(std::size_t keys, bool answer = true) {
        return [this, keys, answer] {
            EXPECT_TRUE(waitFor([&] { return window_->keys().size() >= keys; }));
            EXPECT_THAT(window_->keys(), SizeIs(keys));
            return answer;
        };
    }

    std::unique_ptr<TestWindow> window_;
    std::unique_ptr<KeyTyper> typer_;
    std::size_t seen_ = 0;
    std::string reason_;
};

TEST_F(ChordsTest, TypesControlCAndControlV) {
    ASSERT_EQ(type(Chord::copy), Outcome::typed) << reason_;
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
    ASSERT_EQ(type(Chord::paste), Outcome::typed) << reason_;
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_v);
    EXPECT_THAT(window_->keys(), SizeIs(8));
}

TEST_F(ChordsTest, IgnoresCapsAndNumLock) {
    typer_->tap(XKB_KEY_Caps_Lock);
    typer_->tap(XKB_KEY_Num_Lock);
    ASSERT_EQ(type(Chord::copy), Outcome::typed) << reason_;
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
}

TEST_F(ChordsTest, LeavesAScrollLockThatIsAModifierAlone) {
    server_.run(QStringLiteral("xmodmap"),
                {QStringLiteral("-e"), QStringLiteral("add mod3 = Scroll_Lock")});
    typer_ = std::make_unique<KeyTyper>(*peer_);
    typer_->down(XKB_KEY_Scroll_Lock);
    ASSERT_EQ(typer_->state() & XCB_MOD_MASK_3, XCB_MOD_MASK_3);
    ASSERT_EQ(type(Chord::copy), Outcome::typed) << reason_;
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
    EXPECT_EQ(typer_->state() & XCB_MOD_MASK_3, XCB_MOD_MASK_3);
    EXPECT_THAT(window_->keys(), SizeIs(5)) << "nobody let go of it";
}

TEST_F(ChordsTest, LetsGoOfModifiersThatTheUserKeepsHolding) {
    for (const auto symbol : {XKB_KEY_Control_L, XKB_KEY_Alt_L, XKB_KEY_Super_L, XKB_KEY_space})
        typer_->down(static_cast<xkb_keysym_t>(symbol));
    ASSERT_EQ(type(Chord::copy), Outcome::typed) << reason_;
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
}

TEST_F(ChordsTest, WaitsForTheUserToLetGo) {
    typer_->down(XKB_KEY_Alt_L);
    auto chord = services_->chords->type(Chord::copy, {application(), focus_, nullptr});
    finishTurn();
    EXPECT_FALSE(chord.isReady());
    typer_->up(XKB_KEY_Alt_L);
    EXPECT_EQ(wait(std::move(chord)).outcome, Outcome::typed);
    // The user's own press and release, and no other before the chord.
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
    EXPECT_THAT(window_->keys(), SizeIs(6));
}

TEST_F(ChordsTest, LeavesStickyKeysOn) {
    typer_->switchStickyKeysOn();
    typer_->tap(XKB_KEY_Control_L);
    typer_->tap(XKB_KEY_Alt_L);
    typer_->tap(XKB_KEY_space);
    seen_ = 6;
    ASSERT_TRUE(waitFor([&] { return window_->keys().size() == seen_; }));
    ASSERT_EQ(type(Chord::copy), Outcome::typed) << reason_;
    expectTap(XKB_KEY_c, XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(typer_->state(), 0);
    EXPECT_TRUE(typer_->hasStickyKeys());
}

TEST_F(ChordsTest, PutsLockedModifiersBack) {
    typer_->switchStickyKeysOn();
    for (const auto symbol : {XKB_KEY_Control_L, XKB_KEY_Alt_L}) {
        typer_->tap(static_cast<xkb_keysym_t>(symbol));
        typer_->tap(static_cast<xkb_keysym_t>(symbol));
    }
    constexpr quint16 locked = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    ASSERT_EQ(typer_->state(), locked);
    seen_ = 8;
    ASSERT_TRUE(waitFor([&] { return window_->keys().size() == seen_; }));
    ASSERT_EQ(type(Chord::paste), Outcome::typed) << reason_;
    expectTap(XKB_KEY_v, XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(typer_->state(), locked);
    EXPECT_TRUE(typer_->hasStickyKeys());
}

TEST_F(ChordsTest, LeavesTheKeyUntilItsModifierIsBack) {
    const ScriptedRelay &way = relay({whenItHas(0), whenItHas(1)});
    ASSERT_EQ(type(Chord::paste), Outcome::typed) << reason_;
    EXPECT_EQ(way.asked, 2);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_v);
    finishTurn();
    EXPECT_THAT(window_->keys(), SizeIs(4));
}

TEST_F(ChordsTest, WithholdsWhereKeysAreStuck) {
    const ScriptedRelay &way = relay({whenItHas(0, false)});
    EXPECT_EQ(type(Chord::paste), Outcome::withheld);
    EXPECT_THAT(reason_, EndsWith(" are stuck"));
    EXPECT_EQ(way.asked, 1);
    relay({whenItHas(0), whenItHas(1, false)});
    EXPECT_EQ(type(Chord::paste), Outcome::withheld);
    EXPECT_THAT(reason_, StartsWith("the modifier is stuck"));
    ASSERT_TRUE(waitFor([&] { return window_->keys().size() == 2; }));
    EXPECT_EQ(typer_->state(), 0) << "the modifier alone went down, and up again";
}

TEST_F(ChordsTest, TypesNothingWhereTheFocusWentDuringTheWayRound) {
    TestWindow other(*peer_);
    other.map();
    ASSERT_TRUE(waitFor([&] { return other.isViewable(); }));
    window_->setFocus();
    ASSERT_TRUE(waitFor([&] { return window_->hasFocus(); }));
    beforeTheKey([&] {
        EXPECT_TRUE(waitFor([&] { return window_->keys().size() == 1; }));
        other.setFocus();
        EXPECT_TRUE(waitFor([&] { return other.hasFocus(); }));
    });
    EXPECT_EQ(type(Chord::paste), Outcome::withheld);
    EXPECT_THAT(reason_, EndsWith(" is not in front any more"));
    ASSERT_TRUE(waitFor([&] { return other.keys().size() == 1; }));
    EXPECT_FALSE(other.keys().front().isDown) << "the modifier is let go, and that is all";
    EXPECT_EQ(typer_->state(), 0);
    EXPECT_THAT(window_->keys(), SizeIs(1));
}

TEST_F(ChordsTest, HoldsNothingAheadWithStickyKeys) {
    typer_->switchStickyKeysOn();
    const ScriptedRelay &way = relay({whenItHas(0)});
    ASSERT_EQ(type(Chord::copy), Outcome::typed) << reason_;
    EXPECT_EQ(way.asked, 1);
    expectTap(XKB_KEY_c, XCB_MOD_MASK_CONTROL);
}

TEST_F(ChordsTest, TypesOneAfterAnotherEachAsItWasAskedFor) {
    const auto second = std::make_shared<FocusContext>();
    second->role = FocusContext::Role::terminal;
    const auto secondWay =
        std::make_shared<ScriptedRelay>(QList<ScriptedRelay::Turn>{whenItHas(4), whenItHas(5)});
    second->relay = secondWay;
    const auto lent = lend(QStringLiteral("text"), application());
    std::optional<QCoro::Task<ChordResult>> paste;
    beforeTheKey([&] {
        EXPECT_TRUE(waitFor([&] { return window_->keys().size() == 1; }));
        paste = services_->chords->type(Chord::paste, {application(), second, lent});
        finishTurn();
        EXPECT_EQ(secondWay->asked, 0) << "while another chord has its modifier down";
    });
    EXPECT_EQ(type(Chord::copy), Outcome::typed) << reason_;
    ASSERT_TRUE(paste.has_value());
    EXPECT_EQ(wait(std::move(*paste)).outcome, Outcome::typed);
    expectChord(XKB_KEY_Shift_L, XCB_MOD_MASK_SHIFT, XKB_KEY_Insert);
    ASSERT_THAT(window_->keys(), SizeIs(8));
    EXPECT_EQ(window_->keys()[1].code, typer_->key(XKB_KEY_c));
    EXPECT_EQ(window_->keys()[1].state & 0xff, XCB_MOD_MASK_CONTROL);
    EXPECT_FALSE(window_->keys()[3].isDown);
}

TEST_F(ChordsTest, TurnPassesOnAfterOneThatIsNotTyped) {
    focus_->role = FocusContext::Role::password;
    typer_->down(XKB_KEY_Alt_L);
    auto first = services_->chords->type(
        Chord::paste, {application(), nullptr, lend(QStringLiteral("text"), application())});
    auto withheld = services_->chords->type(Chord::copy, {application(), focus_, nullptr});
    auto last = services_->chords->type(Chord::copy, {application(), nullptr, nullptr});
    finishTurn();
    EXPECT_FALSE(withheld.isReady());
    typer_->up(XKB_KEY_Alt_L);
    EXPECT_EQ(wait(std::move(last)).outcome, Outcome::typed);
    EXPECT_EQ(wait(std::move(first)).outcome, Outcome::typed);
    EXPECT_EQ(wait(std::move(withheld)).outcome, Outcome::withheld);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
}

TEST_F(ChordsTest, NothingStaysDownWhenTheProgramEnds) {
    beforeTheKey([&] {
        EXPECT_TRUE(waitFor([&] { return window_->keys().size() == 1; }));
        EXPECT_NE(typer_->state(), 0);
        services_->chords.reset();
        EXPECT_TRUE(waitFor([&] { return window_->keys().size() == 2; }));
        EXPECT_EQ(typer_->state(), 0);
    });
    EXPECT_EQ(type(Chord::copy), Outcome::withheld);
    services_->connection->serverTime();
    finishTurn();
    EXPECT_THAT(window_->keys(), SizeIs(2)) << "and its key never comes";
}

TEST_F(ChordsTest, WaitForTheUserEndsWithTheProgram) {
    typer_->down(XKB_KEY_Alt_L);
    int cancelled = 0;
    const auto typeAndCount = [&]() -> QCoro::Task<> {
        try {
            co_await services_->chords->type(Chord::copy, {application(), nullptr, nullptr});
        } catch (const CancellationError &) {
            ++cancelled;
        }
    };
    const auto underWay = typeAndCount();
    const auto waiting = typeAndCount();
    finishTurn();
    services_.reset();
    EXPECT_TRUE(waitFor([&] { return cancelled == 2; }));
}

TEST_F(ChordsTest, IsUnavailableWhenTheServerIsGone) {
    xcb_kill_client(peer_->xcb(), services_->connection->window());
    peer_->serverTime();
    ASSERT_TRUE(waitFor([&] { return services_->connection->isLost(); }));
    const ChordResult result = X11Test::type(Chord::copy, application());
    EXPECT_EQ(result.outcome, Outcome::unavailable);
    EXPECT_EQ(result.reason, QStringLiteral("the X server is gone"));
}

TEST_F(ChordsTest, TypesInTheLatinGroupOfAKeyboardWithTwo) {
    server_.run(QStringLiteral("setxkbmap"), {QStringLiteral("us,ru")});
    typer_ = std::make_unique<KeyTyper>(*peer_);
    const xcb_keycode_t latinC = typer_->key(XKB_KEY_c);
    typer_->lockGroup(1);
    ASSERT_EQ(typer_->group(), 1);
    ASSERT_EQ(type(Chord::copy), Outcome::typed) << reason_;
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
    const auto &press = window_->keys()[window_->keys().size() - 3];
    EXPECT_EQ(press.code, latinC);
    EXPECT_EQ(press.state >> 13 & 3, 0) << "typed in the group that has the letter";
    EXPECT_EQ(typer_->group(), 1) << "and the user's group is back";
}

TEST_F(ChordsTest, FindsTheLetterOfTheActiveLayout) {
    server_.run(QStringLiteral("setxkbmap"), {QStringLiteral("us"), QStringLiteral("dvorak")});
    typer_ = std::make_unique<KeyTyper>(*peer_);
    ASSERT_EQ(type(Chord::paste), Outcome::typed) << reason_;
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_v);
}

TEST_F(ChordsTest, WithholdsWhenAnotherWindowIsInFront) {
    TestWindow other(*peer_);
    other.map();
    ASSERT_TRUE(waitFor([&] { return other.isViewable(); }));
    other.setFocus();
    EXPECT_EQ(type(Chord::paste), Outcome::withheld);
    EXPECT_EQ(reason_, QStringLiteral("window 0x%1 did not come to the front")
                           .arg(window_->id(), 0, 16)
                           .toStdString());
    EXPECT_THAT(other.keys(), IsEmpty());
    EXPECT_EQ(X11Test::type(Chord::copy, nullptr).outcome, Outcome::withheld);
}

TEST_F(ChordsTest, WithholdsCopyWhereItIsUnsafe) {
    focus_->role = FocusContext::Role::password;
    EXPECT_EQ(type(Chord::copy), Outcome::withheld);
    EXPECT_EQ(reason_, "the focus is in a password field");
    focus_->role = FocusContext::Role::terminal;
    EXPECT_EQ(type(Chord::copy), Outcome::withheld);
    EXPECT_EQ(reason_, "the copy chord is an interrupt in a terminal");
    EXPECT_THAT(window_->keys(), IsEmpty());
    focus_->role = FocusContext::Role::password;
    EXPECT_EQ(type(Chord::paste), Outcome::typed) << reason_;
}

TEST_F(ChordsTest, WithholdsAPasteOfNothing) {
    EXPECT_EQ(X11Test::type(Chord::paste, application()).outcome, Outcome::withheld);
    const auto lent = lend(QStringLiteral("text"), application());
    pasteboard().replaceContents({});
    const ChordResult result = X11Test::type(Chord::paste, application(), lent);
    EXPECT_EQ(result.outcome, Outcome::withheld);
    EXPECT_EQ(result.reason, QStringLiteral("the pasteboard was replaced meanwhile"));
    EXPECT_THAT(window_->keys(), IsEmpty());
}

TEST_F(ChordsTest, WithholdsWhatTheKeyboardMapHasNoKeyFor) {
    server_.run(QStringLiteral("xmodmap"),
                {QStringLiteral("-e"), QStringLiteral("keysym c = NoSymbol")});
    EXPECT_TRUE(waitFor([&] { return type(Chord::copy) == Outcome::withheld; }));
    EXPECT_EQ(reason_, "there are no keys for the chord");
}

TEST_F(ChordsTest, TypesNothingWhereTheChordsArePartsOfCommands) {
    for (const char *name : {"Emacs", "Gvim"}) {
        window_->setClass(QByteArray("a name of its own") + '\0' + name + '\0');
        for (const Chord chord : {Chord::copy, Chord::paste}) {
            EXPECT_EQ(type(chord), Outcome::withheld) << name;
            EXPECT_THAT(reason_, EndsWith(" has other keys"));
        }
    }
    EXPECT_THAT(window_->keys(), IsEmpty());
    window_->setClass(QByteArray("emacs") + '\0' + "Other" + '\0');
    EXPECT_EQ(type(Chord::copy), Outcome::typed) << reason_;
}

TEST_F(ChordsTest, PastesIntoATerminalFromBothSelections) {
    focus_->role = FocusContext::Role::terminal;
    ASSERT_EQ(type(Chord::paste), Outcome::typed) << reason_;
    EXPECT_EQ(ownerOf("PRIMARY"), services_->connection->window());
    expectChord(XKB_KEY_Shift_L, XCB_MOD_MASK_SHIFT, XKB_KEY_Insert);
    pasteboard().replaceContents({});
    EXPECT_TRUE(waitFor([&] { return ownerOf("PRIMARY") == XCB_WINDOW_NONE; }));
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
