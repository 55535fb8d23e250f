#include "desktop/x11/KeyTyper.h"
#include "desktop/x11/TestWindow.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/X11Property.h"

namespace quillmender::x11 {

namespace {

constexpr QKeyCombination controlOptionSpace(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);

class HotKeysTest : public X11Test {
  protected:
    void SetUp() override {
        X11Test::SetUp();
        typer_ = std::make_unique<KeyTyper>(*peer_);
        window_ = std::make_unique<TestWindow>(*peer_);
        window_->map();
        ASSERT_TRUE(waitFor([this] { return window_->isViewable(); }));
        window_->setFocus();
        ASSERT_TRUE(waitFor([this] { return window_->hasFocus(); }));
    }

    /// What comes of asking for the keys; a hot key counts its presses.
    HotKeyOutcome ask(QKeyCombination keys) {
        return wait(services_->hotKeys->hold(keys, [this] { ++presses_; }));
    }

    void hold(QKeyCombination keys = controlOptionSpace) {
        hotKey_ = ask(keys).hotKey;
        ASSERT_TRUE(hotKey_);
        EXPECT_EQ(hotKey_->keys(), keys);
        QObject::connect(hotKey_.get(), &HeldHotKey::keysChanged, hotKey_.get(),
                         [this] { ++changes_; });
    }

    void pressAndRelease() {
        typer_->down(XKB_KEY_Control_L);
        typer_->down(XKB_KEY_Alt_L);
        typer_->tap(XKB_KEY_space);
        typer_->up(XKB_KEY_Alt_L);
        typer_->up(XKB_KEY_Control_L);
    }

    bool isPressed(int times) {
        const bool isReached = waitFor([&] { return presses_ >= times; });
        services_->connection->serverTime();
        finishTurn();
        return isReached && presses_ == times;
    }

    bool windowSaw(xkb_keysym_t symbol) {
        return std::ranges::any_of(
            window_->keys(), [&](const auto &key) { return key.code == typer_->key(symbol); });
    }

    std::unique_ptr<KeyTyper> typer_;
    std::unique_ptr<TestWindow> window_;
    std::unique_ptr<HeldHotKey> hotKey_;
    int presses_ = 0;
    int changes_ = 0;
};

TEST_F(HotKeysTest, CallsOncePerPressInEveryStateOfTheLocks) {
    hold();
    pressAndRelease();
    EXPECT_TRUE(isPressed(1));
    typer_->tap(XKB_KEY_Caps_Lock);
    pressAndRelease();
    EXPECT_TRUE(isPressed(2));
    typer_->tap(XKB_KEY_Num_Lock);
    pressAndRelease();
    EXPECT_TRUE(isPressed(3));
    typer_->tap(XKB_KEY_Caps_Lock);
    pressAndRelease();
    EXPECT_TRUE(isPressed(4));
    EXPECT_FALSE(windowSaw(XKB_KEY_space));
}

TEST_F(HotKeysTest, IgnoresAScrollLockThatIsAModifier) {
    hold();
    server_.run(QStringLiteral("xmodmap"),
                {QStringLiteral("-e"), QStringLiteral("add mod3 = Scroll_Lock")});
    ASSERT_TRUE(waitFor(
        [&] { return services_->keymap->modifierOf(XKB_KEY_Scroll_Lock) == XCB_MOD_MASK_3; }));
    finishTurn();
    typer_->tap(XKB_KEY_Scroll_Lock);
    ASSERT_EQ(typer_->state() & XCB_MOD_MASK_3, XCB_MOD_MASK_3);
    pressAndRelease();
    EXPECT_TRUE(isPressed(1));
    typer_->tap(XKB_KEY_Caps_Lock);
    typer_->tap(XKB_KEY_Num_Lock);
    pressAndRelease();
    EXPECT_TRUE(isPressed(2));
    EXPECT_FALSE(windowSaw(XKB_KEY_space));
}

TEST_F(HotKeysTest, SleepsWhileTheUserTypesElsewhere) {
    hold();
    // The server announces the keyboard that is typed on when it is another one than before.
    typer_->tap(XKB_KEY_a);
    ASSERT_TRUE(waitFor([&] { return windowSaw(XKB_KEY_a); }));
    services_->connection->serverTime();
    finishTurn();
    int events = 0;
    QObject::connect(services_->connection.get(), &X11Connection::eventReceived, window_.get(),
                     [&] { ++events; });
    const std::size_t before = window_->keys().size();
    for (int i = 0; i < 40; ++i) {
        typer_->tap(XKB_KEY_x);
        typer_->tap(XKB_KEY_space);
        typer_->tap(XKB_KEY_Caps_Lock);
        typer_->down(XKB_KEY_Shift_L);
        typer_->tap(XKB_KEY_c);
        typer_->up(XKB_KEY_Shift_L);
    }
    EXPECT_TRUE(waitFor([&] { return window_->keys().size() >= before + 400; }));
    // Keys that no window of the application wants are offered to the root window's listeners.
    xcb_set_input_focus(peer_->xcb(), XCB_INPUT_FOCUS_NONE, peer_->root(), XCB_CURRENT_TIME);
    typer_->tap(XKB_KEY_x);
    services_->connection->serverTime();
    finishTurn();
    EXPECT_EQ(events, 0);
}

TEST_F(HotKeysTest, LeavesOtherCombinationsAlone) {
    hold();
    typer_->down(XKB_KEY_Shift_L);
    pressAndRelease();
    typer_->up(XKB_KEY_Shift_L);
    typer_->tap(XKB_KEY_space);
    EXPECT_TRUE(waitFor([&] { return windowSaw(XKB_KEY_space); }));
    EXPECT_TRUE(isPressed(0));
}

TEST_F(HotKeysTest, LeavesOtherCombinationsAloneWhileAHotKeyIsDown) {
    hold();
    const HotKeyOutcome other = ask(QKeyCombination(Qt::ControlModifier, Qt::Key_K));
    ASSERT_TRUE(other.hotKey);
    bool isTold = false;
    QObject::connect(services_->connection.get(), &X11Connection::eventReceived, window_.get(),
                     [&](const xcb_generic_event_t *event) {
                         isTold = isTold || (eventType(event) == XCB_KEY_PRESS &&
                                             eventCast<xcb_key_press_event_t>(event).detail ==
                                                 typer_->key(XKB_KEY_k));
                     });
    typer_->down(XKB_KEY_Control_L);
    typer_->down(XKB_KEY_Alt_L);
    typer_->down(XKB_KEY_space);
    EXPECT_TRUE(isPressed(1));
    // All keys come to whoever has the one that is down.
    typer_->tap(XKB_KEY_k);
    EXPECT_TRUE(waitFor([&] { return isTold; }));
    EXPECT_TRUE(isPressed(1));
    for (const xkb_keysym_t key : {XKB_KEY_space, XKB_KEY_Alt_L, XKB_KEY_Control_L})
        typer_->up(key);
}

TEST_F(HotKeysTest, CallsOnceForAHeldKeyThatRepeats) {
    // The first repeat after 100 ms, then one every 10.
    server_.run(QStringLiteral("xset"), {QStringLiteral("r"), QStringLiteral("rate"),
                                         QStringLiteral("100"), QStringLiteral("100")});
    hold();
    int repeats = 0;
    QObject::connect(services_->connection.get(), &X11Connection::eventReceived, window_.get(),
                     [&](const xcb_generic_event_t *event) {
                         if (eventType(event) == XCB_KEY_PRESS)
                             ++repeats;
                     });
    typer_->down(XKB_KEY_Control_L);
    typer_->down(XKB_KEY_Alt_L);
    typer_->down(XKB_KEY_space);
    EXPECT_TRUE(waitFor([&] { return repeats > 10; }));
    typer_->up(XKB_KEY_Alt_L);
    typer_->up(XKB_KEY_Control_L);
    const int beforeLettingGo = repeats;
    EXPECT_TRUE(waitFor([&] { return repeats > beforeLettingGo + 5; }));
    EXPECT_FALSE(windowSaw(XKB_KEY_space)) << "the rest of a held Space is not typed";
    typer_->up(XKB_KEY_space);
    EXPECT_TRUE(isPressed(1));
    pressAndRelease();
    EXPECT_TRUE(isPressed(2));
    EXPECT_FALSE(windowSaw(XKB_KEY_space));
}

TEST_F(HotKeysTest, FreesAHeldKeyForAChord) {
    hold();
    typer_->down(XKB_KEY_Control_L);
    typer_->down(XKB_KEY_Alt_L);
    typer_->down(XKB_KEY_space);
    EXPECT_TRUE(isPressed(1));
    const auto target = std::make_shared<X11RunningApplication>(window_->id(), 0);
    EXPECT_EQ(type(Chord::copy, target).outcome, Outcome::typed);
    EXPECT_FALSE(windowSaw(XKB_KEY_space));
    typer_->tap(XKB_KEY_x);
    EXPECT_TRUE(waitFor([&] { return windowSaw(XKB_KEY_x); })) << "the keyboard is free";
    pressAndRelease();
    EXPECT_TRUE(isPressed(2));
}

TEST_F(HotKeysTest, FollowsTheKeyboardMap) {
    hold();
    server_.run(QStringLiteral("setxkbmap"), {QStringLiteral("us,ru")});
    typer_ = std::make_unique<KeyTyper>(*peer_);
    typer_->lockGroup(1);
    pressAndRelease();
    EXPECT_TRUE(isPressed(1));
    const xcb_keycode_t before = typer_->key(XKB_KEY_space);
    // Space moves to where F1 was.
    server_.run(QStringLiteral("xmodmap"),
                {QStringLiteral("-e"), QStringLiteral("keycode %1 = F1").arg(before),
                 QStringLiteral("-e"), QStringLiteral("keycode 67 = space")});
    ASSERT_TRUE(waitFor(
        [&] { return services_->keymap->keysOf(XKB_KEY_space) == QList<xcb_keycode_t>{67}; }));
    finishTurn();
    typer_ = std::make_unique<KeyTyper>(*peer_);
    ASSERT_EQ(typer_->key(XKB_KEY_space), 67);
    pressAndRelease();
    EXPECT_TRUE(isPressed(2));
}

TEST_F(HotKeysTest, WaitsForAKeyThatIsTaken) {
    const xcb_keycode_t space = typer_->key(XKB_KEY_space);
    constexpr quint16 modifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    xcb_grab_key(peer_->xcb(), 0, peer_->root(), modifiers, space, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    peer_->serverTime();
    hotKey_ = ask(controlOptionSpace).hotKey;
    ASSERT_TRUE(hotKey_);
    EXPECT_EQ(hotKey_->keys(), std::nullopt);
    QObject::connect(hotKey_.get(), &HeldHotKey::keysChanged, hotKey_.get(),
                     [this] { ++changes_; });
    // Any window that becomes the active one.
    const auto changeRootWindow = [&] {
        writeCardinals(*peer_, peer_->root(), peer_->atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW,
                       {window_->id()});
        peer_->serverTime();
    };
    changeRootWindow();
    pressAndRelease();
    EXPECT_TRUE(isPressed(0));
    // The first key of a session changes the keyboard map, which is another reason to try.
    finishTurn();
    EXPECT_EQ(hotKey_->keys(), std::nullopt);
    EXPECT_EQ(changes_, 0);

    xcb_ungrab_key(peer_->xcb(), space, peer_->root(), modifiers);
    changeRootWindow();
    services_->connection->serverTime();
    finishTurn();
    EXPECT_EQ(hotKey_->keys(), controlOptionSpace);
    EXPECT_EQ(changes_, 1);
    pressAndRelease();
    EXPECT_TRUE(isPressed(1));
    hotKey_.reset();
    pressAndRelease();
    EXPECT_TRUE(isPressed(1));
}

TEST_F(HotKeysTest, LosesAKeyThatAnotherProgramHasWhereTheMapPutsIt) {
    hold();
    // Space moves to where F1 was, which another program has with these modifiers.
    constexpr xcb_keycode_t target = 67;
    constexpr quint16 modifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    xcb_grab_key(peer_->xcb(), 0, peer_->root(), modifiers, target, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    peer_->serverTime();
    server_.run(QStringLiteral("xmodmap"),
                {QStringLiteral("-e"),
                 QStringLiteral("keycode %1 = F1").arg(typer_->key(XKB_KEY_space)),
                 QStringLiteral("-e"), QStringLiteral("keycode 67 = space")});
    ASSERT_TRUE(waitFor([&] { return changes_ > 0; }));
    EXPECT_EQ(hotKey_->keys(), std::nullopt);

    xcb_ungrab_key(peer_->xcb(), target, peer_->root(), modifiers);
    peer_->serverTime();
    window_->setFocus();
    writeCardinals(*peer_, peer_->root(), peer_->atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW,
                   {window_->id()});
    ASSERT_TRUE(waitFor([&] { return hotKey_->keys() == controlOptionSpace; }));
    EXPECT_EQ(changes_, 2);
}

TEST_F(HotKeysTest, HoldsALetterWithEachModifier) {
    using Held = std::pair<Qt::KeyboardModifier, xkb_keysym_t>;
    for (const auto &[modifier, symbol] :
         {Held(Qt::ControlModifier, XKB_KEY_Control_L), Held(Qt::AltModifier, XKB_KEY_Alt_L),
          Held(Qt::ShiftModifier, XKB_KEY_Shift_L), Held(Qt::MetaModifier, XKB_KEY_Super_L)}) {
        hold(QKeyCombination(modifier, Qt::Key_K));
        presses_ = 0;
        typer_->down(symbol);
        typer_->tap(XKB_KEY_k);
        typer_->up(symbol);
        EXPECT_TRUE(isPressed(1)) << modifier;
    }
    EXPECT_FALSE(windowSaw(XKB_KEY_k));
}

TEST_F(HotKeysTest, SaysWhyAKeyCannotBeHeld) {
    const HotKeyOutcome outcome = ask(QKeyCombination(Qt::ControlModifier, Qt::Key_MediaPlay));
    EXPECT_EQ(outcome.hotKey, nullptr);
    EXPECT_FALSE(outcome.reason.isEmpty());
}

TEST_F(HotKeysTest, RunsTheHandlerInATurnOfItsOwn) {
    int pressesWithinTheEvent = -1;
    hold();
    QObject::connect(services_->connection.get(), &X11Connection::eventReceived, hotKey_.get(),
                     [&](const xcb_generic_event_t *event) {
                         if (eventType(event) == XCB_KEY_PRESS)
                             pressesWithinTheEvent = presses_;
                     });
    pressAndRelease();
    EXPECT_TRUE(isPressed(1));
    EXPECT_EQ(pressesWithinTheEvent, 0);
}

TEST_F(HotKeysTest, StopsWhenLetGoOf) {
    hold();
    hotKey_.reset();
    pressAndRelease();
    EXPECT_TRUE(waitFor([&] { return windowSaw(XKB_KEY_space); }));
    EXPECT_TRUE(isPressed(0));
    hold();
    pressAndRelease();
    EXPECT_TRUE(isPressed(1));
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
