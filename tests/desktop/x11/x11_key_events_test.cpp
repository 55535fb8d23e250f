#include "desktop/x11/KeyTyper.h"
#include "desktop/x11/TestWindow.h"
#include "desktop/x11/X11Test.h"

namespace quillmender {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Answers as it is told, when the keys that it was told to expect have reached the window.
class ScriptedDetour : public KeyDetour {
  public:
    explicit ScriptedDetour(const TestWindow &window) : window_(window) {}

    QCoro::Task<bool> isPassed(std::chrono::milliseconds) override {
        const Turn turn = turns.takeFirst();
        EXPECT_TRUE(waitFor([&] { return window_.keys().size() >= turn.keys; }));
        seen.push_back(window_.keys().size());
        if (turn.then)
            turn.then();
        co_return turn.answer;
    }

    struct Turn {
        std::size_t keys = 0;
        bool answer = true;
        std::function<void()> then = {};
    };

    QList<Turn> turns;
    std::vector<std::size_t> seen;

  private:
    const TestWindow &window_;
};

class KeyEventsTest : public X11Test {
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

    ChordReadiness prepare(Chord chord) {
        return wait(services_->keyEvents->prepareChord(application(), chord, focus_));
    }

    void post(quint16 code) {
        KeyEvents &keys = *services_->keyEvents;
        const auto source = keys.createSource(combinedSessionState);
        for (const bool isDown : {true, false}) {
            const auto event = keys.createKeyboardEvent(source, code, isDown);
            ASSERT_NE(event, nullptr);
            keys.setFlags(event, commandFlag);
            keys.post(hidEventTap, event);
        }
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

    /// The application's keys take a detour from now on, which goes as the turns say.
    ScriptedDetour &detour(const QList<ScriptedDetour::Turn> &turns) {
        const auto detour = std::make_shared<ScriptedDetour>(*window_);
        detour->turns = turns;
        focus_->detour = detour;
        return *detour;
    }

    std::unique_ptr<TestWindow> window_;
    std::unique_ptr<KeyTyper> typer_;
    std::size_t seen_ = 0;
};

TEST_F(KeyEventsTest, TypesControlCAndControlV) {
    ASSERT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    post(keycode::c);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
    ASSERT_EQ(prepare(Chord::paste), ChordReadiness::ready);
    post(keycode::v);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_v);
    EXPECT_THAT(window_->keys(), SizeIs(8));
}

TEST_F(KeyEventsTest, IgnoresCapsAndNumLock) {
    typer_->tap(XKB_KEY_Caps_Lock);
    typer_->tap(XKB_KEY_Num_Lock);
    ASSERT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    post(keycode::c);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
}

TEST_F(KeyEventsTest, LeavesAScrollLockThatIsAModifierAlone) {
    server_.run(QStringLiteral("xmodmap"),
                {QStringLiteral("-e"), QStringLiteral("add mod3 = Scroll_Lock")});
    typer_ = std::make_unique<KeyTyper>(*peer_);
    typer_->down(XKB_KEY_Scroll_Lock);
    ASSERT_EQ(typer_->state() & XCB_MOD_MASK_3, XCB_MOD_MASK_3);
    ASSERT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    post(keycode::c);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
    EXPECT_EQ(typer_->state() & XCB_MOD_MASK_3, XCB_MOD_MASK_3);
    EXPECT_THAT(window_->keys(), SizeIs(5)) << "nobody let go of it";
}

TEST_F(KeyEventsTest, LetsGoOfModifiersThatTheUserKeepsHolding) {
    for (const auto symbol : {XKB_KEY_Control_L, XKB_KEY_Alt_L, XKB_KEY_Super_L, XKB_KEY_space})
        typer_->down(static_cast<xkb_keysym_t>(symbol));
    ASSERT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    post(keycode::c);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
}

TEST_F(KeyEventsTest, WaitsForTheUserToLetGo) {
    typer_->down(XKB_KEY_Alt_L);
    std::optional<ChordReadiness> readiness;
    const auto prepareInBackground = [&]() -> QCoro::Task<> {
        readiness = co_await services_->keyEvents->prepareChord(application(), Chord::copy, focus_);
    };
    const auto task = prepareInBackground();
    finishTurn();
    EXPECT_EQ(readiness, std::nullopt);
    typer_->up(XKB_KEY_Alt_L);
    EXPECT_TRUE(waitFor([&] { return readiness == ChordReadiness::ready; }));
    // The user's own press and release, and no other.
    EXPECT_TRUE(waitFor([&] { return window_->keys().size() == 2; }));
}

TEST_F(KeyEventsTest, LeavesStickyKeysOn) {
    typer_->switchStickyKeysOn();
    typer_->tap(XKB_KEY_Control_L);
    typer_->tap(XKB_KEY_Alt_L);
    typer_->tap(XKB_KEY_space);
    ASSERT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    seen_ = 6;
    ASSERT_TRUE(waitFor([&] { return window_->keys().size() == seen_; }));
    post(keycode::c);
    expectTap(XKB_KEY_c, XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(typer_->state(), 0);
    EXPECT_TRUE(typer_->hasStickyKeys());
}

TEST_F(KeyEventsTest, PutsLockedModifiersBack) {
    typer_->switchStickyKeysOn();
    for (const auto symbol : {XKB_KEY_Control_L, XKB_KEY_Alt_L}) {
        typer_->tap(static_cast<xkb_keysym_t>(symbol));
        typer_->tap(static_cast<xkb_keysym_t>(symbol));
    }
    constexpr quint16 locked = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    ASSERT_EQ(typer_->state(), locked);
    ASSERT_EQ(prepare(Chord::paste), ChordReadiness::ready);
    seen_ = 8;
    ASSERT_TRUE(waitFor([&] { return window_->keys().size() == seen_; }));
    post(keycode::v);
    expectTap(XKB_KEY_v, XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(typer_->state(), locked);
    EXPECT_TRUE(typer_->hasStickyKeys());
}

TEST_F(KeyEventsTest, LeavesTheKeyUntilItsModifierIsBack) {
    const ScriptedDetour &way = detour({{}, {.keys = 1}});
    ASSERT_EQ(prepare(Chord::paste), ChordReadiness::ready);
    EXPECT_THAT(way.seen, ElementsAre(0U, 1U)) << "first asked with nothing down";
    post(keycode::v);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_v);
    finishTurn();
    EXPECT_THAT(window_->keys(), SizeIs(4));
}

TEST_F(KeyEventsTest, LetsGoOfAModifierWhoseKeyDoesNotCome) {
    detour({{}, {.keys = 1}});
    ASSERT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    ASSERT_TRUE(waitFor([&] { return window_->keys().size() == 2; }));
    EXPECT_FALSE(window_->keys().back().isDown);
    EXPECT_EQ(typer_->state(), 0);
}

TEST_F(KeyEventsTest, WithholdsWhereKeysAreStuck) {
    const ScriptedDetour &way = detour({{.answer = false}});
    EXPECT_EQ(prepare(Chord::paste), ChordReadiness::withheld);
    EXPECT_THAT(way.seen, SizeIs(1));
    detour({{}, {.keys = 1, .answer = false}});
    EXPECT_EQ(prepare(Chord::paste), ChordReadiness::withheld);
    ASSERT_TRUE(waitFor([&] { return window_->keys().size() == 2; }));
    EXPECT_EQ(typer_->state(), 0) << "the modifier alone went down, and up again";
}

TEST_F(KeyEventsTest, TypesNothingWhereTheFocusWentDuringTheDetour) {
    TestWindow other(*peer_);
    other.map();
    ASSERT_TRUE(waitFor([&] { return other.isViewable(); }));
    window_->setFocus();
    ASSERT_TRUE(waitFor([&] { return window_->hasFocus(); }));
    detour({{}, {.keys = 1, .then = [&] {
                     other.setFocus();
                     EXPECT_TRUE(waitFor([&] { return other.hasFocus(); }));
                 }}});
    prepare(Chord::paste);
    post(keycode::v);
    ASSERT_TRUE(waitFor([&] { return other.keys().size() == 1; }));
    EXPECT_FALSE(other.keys().front().isDown) << "the modifier is let go, and that is all";
    EXPECT_EQ(typer_->state(), 0);
    EXPECT_THAT(window_->keys(), SizeIs(1));
}

TEST_F(KeyEventsTest, HoldsNothingAheadWithStickyKeys) {
    typer_->switchStickyKeysOn();
    const ScriptedDetour &way = detour({{}});
    ASSERT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    EXPECT_THAT(way.seen, SizeIs(1));
    post(keycode::c);
    expectTap(XKB_KEY_c, XCB_MOD_MASK_CONTROL);
}

TEST_F(KeyEventsTest, TypesInTheLatinGroupOfAKeyboardWithTwo) {
    server_.run(QStringLiteral("setxkbmap"), {QStringLiteral("us,ru")});
    typer_ = std::make_unique<KeyTyper>(*peer_);
    const xcb_keycode_t latinC = typer_->key(XKB_KEY_c);
    typer_->lockGroup(1);
    ASSERT_EQ(typer_->group(), 1);
    ASSERT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    post(keycode::c);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_c);
    const auto &press = window_->keys()[window_->keys().size() - 3];
    EXPECT_EQ(press.code, latinC);
    EXPECT_EQ(press.state >> 13 & 3, 0) << "typed in the group that has the letter";
    EXPECT_EQ(typer_->group(), 1) << "and the user's group is back";
}

TEST_F(KeyEventsTest, FindsTheLetterOfTheActiveLayout) {
    server_.run(QStringLiteral("setxkbmap"), {QStringLiteral("us"), QStringLiteral("dvorak")});
    typer_ = std::make_unique<KeyTyper>(*peer_);
    ASSERT_EQ(prepare(Chord::paste), ChordReadiness::ready);
    post(keycode::v);
    expectChord(XKB_KEY_Control_L, XCB_MOD_MASK_CONTROL, XKB_KEY_v);
}

TEST_F(KeyEventsTest, WithholdsWhenAnotherWindowIsInFront) {
    TestWindow other(*peer_);
    other.map();
    ASSERT_TRUE(waitFor([&] { return other.isViewable(); }));
    other.setFocus();
    EXPECT_EQ(prepare(Chord::paste), ChordReadiness::withheld);
    EXPECT_THAT(other.keys(), IsEmpty());
    EXPECT_EQ(wait(services_->keyEvents->prepareChord(nullptr, Chord::paste, focus_)),
              ChordReadiness::withheld);
}

TEST_F(KeyEventsTest, WithholdsCopyWhereItIsUnsafe) {
    focus_->role = FocusRecord::Role::password;
    EXPECT_EQ(prepare(Chord::copy), ChordReadiness::withheld);
    EXPECT_EQ(prepare(Chord::paste), ChordReadiness::ready);
    focus_->role = FocusRecord::Role::terminal;
    EXPECT_EQ(prepare(Chord::copy), ChordReadiness::withheld);
    EXPECT_THAT(window_->keys(), IsEmpty());
}

TEST_F(KeyEventsTest, TypesNothingWhereTheChordsArePartsOfCommands) {
    for (const char *name : {"Emacs", "Gvim"}) {
        window_->setClass(QByteArray("a name of its own") + '\0' + name + '\0');
        ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
        EXPECT_EQ(prepare(Chord::copy), ChordReadiness::withheld) << name;
        EXPECT_EQ(prepare(Chord::paste), ChordReadiness::withheld) << name;
    }
    window_->setClass(QByteArray("emacs") + '\0' + "Other" + '\0');
    EXPECT_EQ(prepare(Chord::copy), ChordReadiness::ready);
    EXPECT_THAT(window_->keys(), IsEmpty());
}

TEST_F(KeyEventsTest, PastesIntoATerminalFromBothSelections) {
    focus_->role = FocusRecord::Role::terminal;
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
    ASSERT_EQ(prepare(Chord::paste), ChordReadiness::ready);
    EXPECT_EQ(ownerOf("PRIMARY"), services_->connection->window());
    post(keycode::v);
    expectChord(XKB_KEY_Shift_L, XCB_MOD_MASK_SHIFT, XKB_KEY_Insert);
    pasteboard().clearContents();
    finishTurn();
    EXPECT_EQ(ownerOf("PRIMARY"), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(KeyEventsTest, MakesOnlyTheEventsOfItsChords) {
    KeyEvents &keys = *services_->keyEvents;
    const auto source = keys.createSource(combinedSessionState);
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(keys.createKeyboardEvent(source, keycode::space, true), nullptr);
    EXPECT_EQ(keys.createKeyboardEvent(nullptr, keycode::c, true), nullptr);
    for (const bool isDown : {true, false})
        keys.post(hidEventTap, keys.createKeyboardEvent(source, keycode::c, isDown));
    typer_->tap(XKB_KEY_x);
    EXPECT_TRUE(waitFor([&] { return window_->keys().size() == 2; }));
    EXPECT_EQ(window_->keys().front().code, typer_->key(XKB_KEY_x)) << "no flags, no chord";
}

} // namespace

} // namespace quillmender

int main(int argc, char **argv) {
    return quillmender::runX11Tests(argc, argv);
}
