#include "desktop/wayland/wlroots/WlrootsTest.h"
#include "platform/HeldHotKey.h"
#include "platform/linux/wayland/keys/VirtualKeyboard.h"
#include "platform/linux/wayland/sway/SwayHotKeys.h"
#include "platform/linux/wayland/sway/SwayIpc.h"
#include "platform/linux/wayland/sway/SwayToplevels.h"
#include "platform/linux/wayland/wlroots/ForeignToplevels.h"

#include <QJsonArray>

namespace quillmender::wlroots {

namespace {

using namespace std::chrono_literals;
using sway::Request;
using sway::SwayIpc;
using wayland::TypedKeys;

constexpr QKeyCombination controlAltSpace(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);

class SwayTest : public WlrootsTest {
  protected:
    void startSway(const QByteArray &configuration = {}, const QByteArray &layouts = "us",
                   quint32 active = 0) {
        start(Compositor::Kind::sway, configuration, layouts, active);
        ipc_ = std::make_unique<SwayIpc>(compositor_->swaySocket());
        ASSERT_TRUE(ipc_->isConnected());
        foreign_ = ForeignToplevels::create(*connection_, QStringLiteral("own"));
        ASSERT_NE(foreign_, nullptr);
        toplevels_ = std::make_unique<sway::SwayToplevels>(
            *ipc_, [this] { return foreign_->isAnyActive(); });
        ASSERT_TRUE(becomesTrue([this] { return toplevels_->isKnown(); }));
    }

    QJsonDocument ask(Request request, const QByteArray &payload = {}) {
        return QCoro::waitFor(ipc_->ask(request, payload, 20s)).value_or(QJsonDocument());
    }

    void run(const QByteArray &command) {
        const QJsonObject outcome = ask(Request::runCommand, command).array().first().toObject();
        EXPECT_TRUE(outcome[u"success"].toBool())
            << command.toStdString() << ": " << outcome[u"error"].toString().toStdString();
    }

    void hold(QKeyCombination keys = controlAltSpace) {
        hotKeys_ = std::make_unique<sway::SwayHotKeys>(*ipc_);
        HotKeyOutcome outcome = QCoro::waitFor(hotKeys_->hold(keys, [this] { ++presses_; }));
        hotKey_ = std::move(outcome.hotKey);
        reason_ = outcome.reason;
        ASSERT_NE(hotKey_, nullptr);
    }

    bool isPressed(int times) {
        return becomesTrue([&] { return presses_ >= times; }) && isPressedNow(times);
    }

    /// When what the compositor has to tell so far has been told.
    bool isPressedNow(int times) {
        ask(Request::getVersion);
        bool isDone = false;
        QTimer::singleShot(0, [&] { isDone = true; });
        return becomesTrue([&] { return isDone; }) && presses_ == times;
    }

    bool becomesActive(const QString &appId) {
        return becomesTrue([&] {
            const auto active = toplevels_->active();
            return active && active->appId == appId && toplevels_->hasKeyboard(active->id);
        });
    }

    std::unique_ptr<SwayIpc> ipc_;
    std::unique_ptr<ForeignToplevels> foreign_;
    std::unique_ptr<sway::SwayToplevels> toplevels_;
    std::unique_ptr<sway::SwayHotKeys> hotKeys_;
    std::unique_ptr<HeldHotKey> hotKey_;
    QString reason_;
    int presses_ = 0;
};

TEST_F(SwayTest, OnePressIsOneCallInEveryStateOfTheLocks) {
    startSway();
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    hold();
    ASSERT_EQ(hotKey_->keys(), controlAltSpace) << reason_.toStdString();
    pressHotKey();
    EXPECT_TRUE(isPressed(1));
    for (const xkb_keysym_t lock : {XKB_KEY_Caps_Lock, XKB_KEY_Num_Lock, XKB_KEY_Caps_Lock}) {
        user_->tap(lock);
        const int before = presses_;
        pressHotKey();
        EXPECT_TRUE(isPressed(before + 1)) << lock;
    }
    EXPECT_EQ(typed(), "");
}

TEST_F(SwayTest, AKeyThatIsHeldDownIsOnePress) {
    startSway("input * repeat_delay 50\ninput * repeat_rate 100\n");
    hold();
    // Another binding, which does repeat, tells that time for repeats has passed.
    int repeats = 0;
    QObject::connect(ipc_.get(), &SwayIpc::eventReceived, hotKey_.get(),
                     [&](sway::Event event, const QJsonObject &content) {
                         if (event == sway::Event::binding &&
                             content[u"binding"].toObject()[u"command"] == QStringLiteral("nop r"))
                             ++repeats;
                     });
    run("bindsym Ctrl+Mod1+x nop r");
    user_->down(XKB_KEY_Control_L);
    user_->down(XKB_KEY_Alt_L);
    user_->down(XKB_KEY_x);
    EXPECT_TRUE(becomesTrue([&] { return repeats > 3; }));
    user_->up(XKB_KEY_x);
    user_->down(XKB_KEY_space);
    EXPECT_TRUE(isPressed(1));
    bool isOver = false;
    QTimer::singleShot(300ms, [&] { isOver = true; });
    EXPECT_TRUE(becomesTrue([&] { return isOver; }));
    user_->up(XKB_KEY_space);
    EXPECT_TRUE(isPressed(1));
}

TEST_F(SwayTest, TheUsersOwnBindingStaysAndRuns) {
    startSway("set $mod Control+Alt\nbindsym $mod+space exec touch " +
              QByteArray("/tmp/quillmender-theirs\n"));
    QFile::remove(QStringLiteral("/tmp/quillmender-theirs"));
    hold();
    EXPECT_EQ(hotKey_->keys(), std::nullopt);
    EXPECT_TRUE(reason_.contains(QStringLiteral("configuration"))) << reason_.toStdString();
    pressHotKey();
    EXPECT_TRUE(
        becomesTrue([] { return QFile::exists(QStringLiteral("/tmp/quillmender-theirs")); }));
    EXPECT_EQ(presses_, 0);
    QFile::remove(QStringLiteral("/tmp/quillmender-theirs"));
}

TEST_F(SwayTest, ComesBackAfterAReload) {
    startSway();
    hold();
    run("reload");
    EXPECT_TRUE(becomesTrue([&] {
        const int before = presses_;
        pressHotKey();
        return isPressedNow(before + 1);
    }));
    compositor_->writeConfiguration("bindsym Mod1+Ctrl+space nop theirs\n");
    run("reload");
    EXPECT_TRUE(becomesTrue([&] { return !hotKey_->keys(); }));
    compositor_->writeConfiguration("");
    run("reload");
    EXPECT_TRUE(becomesTrue([&] { return hotKey_->keys().has_value(); }));
}

TEST_F(SwayTest, IsUnboundWhenItEnds) {
    startSway();
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    hold();
    hotKey_.reset();
    ask(Request::getVersion);
    pressHotKey();
    // Control+Alt+Space reaches the terminal, which makes something of it.
    EXPECT_TRUE(becomesTrue([&] { return !typed().isEmpty(); }));
    EXPECT_EQ(presses_, 0);
}

struct Layout {
    const char *layouts;
    quint32 active;
};

class SwayLayouts : public SwayTest, public testing::WithParamInterface<Layout> {};

TEST_P(SwayLayouts, HotKeyAndChordsWork) {
    const Layout layout = GetParam();
    startSway("input * xkb_layout " + QByteArray(layout.layouts) + "\n", layout.layouts,
              layout.active);
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    hold();
    pressHotKey();
    EXPECT_TRUE(isPressed(1));

    // The same keys of the board as before and after the chord, by their place.
    constexpr quint32 placeOfF = 33;
    // Until a modifier changes, a new window has not been told the active layout.
    user_->tap(XKB_KEY_Shift_L);
    user_->tapCode(placeOfF);
    EXPECT_TRUE(becomesTrue([&] { return !typed().isEmpty(); }));
    const QByteArray letter = typed();
    const auto keyboard = wayland::VirtualKeyboard::create(*connection_);
    ASSERT_NE(keyboard, nullptr);
    const auto type = [&](TypedKeys keys) {
        return QCoro::waitFor(keyboard->type(keys, [] { return true; }, [] {})).isTyped;
    };
    EXPECT_TRUE(type(TypedKeys::controlC));
    EXPECT_TRUE(type(TypedKeys::controlV));
    user_->tapCode(placeOfF);
    const QByteArray wanted = letter + "\x03\x16" + letter;
    EXPECT_TRUE(becomesTrue([&] { return typed().size() >= wanted.size(); }));
    EXPECT_EQ(typed(), wanted);
}

INSTANTIATE_TEST_SUITE_P(
    Of, SwayLayouts,
    testing::Values(Layout{"us", 0}, Layout{"de", 0}, Layout{"ru", 0}, Layout{"gr", 0},
                    Layout{"us,ru", 1}),
    [](const auto &info) {
        return QString::fromUtf8(info.param.layouts).remove(u',').toStdString();
    });

TEST_F(SwayTest, ChordsDoNotMixWithWhatTheUserHolds) {
    startSway();
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    const auto keyboard = wayland::VirtualKeyboard::create(*connection_);
    user_->down(XKB_KEY_Control_L);
    user_->down(XKB_KEY_Alt_L);
    QStringList order;
    const auto outcome = QCoro::waitFor(keyboard->type(
        TypedKeys::controlC,
        [&] {
            order.append(QStringLiteral("asked"));
            return true;
        },
        [&] { order.append(QStringLiteral("noted")); }));
    EXPECT_TRUE(outcome.isTyped);
    EXPECT_EQ(order, QStringList({QStringLiteral("asked"), QStringLiteral("noted")}));
    user_->up(XKB_KEY_Alt_L);
    user_->up(XKB_KEY_Control_L);
    user_->tap(XKB_KEY_a);
    EXPECT_TRUE(becomesTrue([&] { return typed().size() >= 2; }));
    EXPECT_EQ(typed(), "\x03"
                       "a");
}

TEST_F(SwayTest, NothingIsTypedThatIsNotMeantAnyMore) {
    startSway();
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    const auto keyboard = wayland::VirtualKeyboard::create(*connection_);
    bool isNoted = false;
    const auto outcome = QCoro::waitFor(
        keyboard->type(TypedKeys::controlC, [] { return false; }, [&] { isNoted = true; }));
    EXPECT_FALSE(outcome.isTyped);
    EXPECT_FALSE(outcome.isUnavailable);
    EXPECT_FALSE(isNoted);
    user_->tap(XKB_KEY_a);
    EXPECT_TRUE(becomesTrue([&] { return !typed().isEmpty(); }));
    EXPECT_EQ(typed(), "a");
}

TEST_F(SwayTest, LeavesNoKeyboardBehind) {
    startSway();
    const auto inputs = [&] { return ask(static_cast<Request>(100)).array().size(); };
    const qsizetype before = inputs();
    const auto keyboard = wayland::VirtualKeyboard::create(*connection_);
    EXPECT_TRUE(
        QCoro::waitFor(keyboard->type(TypedKeys::controlC, [] { return true; }, [] {})).isTyped);
    EXPECT_EQ(inputs(), before);
}

TEST_F(SwayTest, FollowsTheWindows) {
    startSway();
    EXPECT_EQ(toplevels_->active(), std::nullopt);
    const auto &first = startTerminal(QStringLiteral("first"));
    ASSERT_TRUE(becomesActive(QStringLiteral("first")));
    EXPECT_EQ(toplevels_->active()->processId, first.pid());
    EXPECT_TRUE(
        becomesTrue([&] { return toplevels_->active()->output == QStringLiteral("HEADLESS-1"); }));
    const QByteArray firstId = toplevels_->active()->id;
    auto &second = startTerminal(QStringLiteral("second"));
    ASSERT_TRUE(becomesActive(QStringLiteral("second")));
    EXPECT_FALSE(toplevels_->hasKeyboard(firstId));
    EXPECT_TRUE(toplevels_->activate(firstId));
    EXPECT_TRUE(becomesActive(QStringLiteral("first")));
    run("workspace 2");
    EXPECT_TRUE(becomesTrue([&] { return !toplevels_->active(); }));
    EXPECT_TRUE(toplevels_->activate(firstId));
    EXPECT_TRUE(becomesActive(QStringLiteral("first")));
    EXPECT_TRUE(becomesTrue([&] { return toplevels_->active()->id == firstId; }));
    second.end();
    const QByteArray gone = toplevels_->active()->id;
    EXPECT_EQ(gone, firstId);
}

TEST_F(SwayTest, TheProtocolForTaskBarsTellsTheSame) {
    startSway();
    startTerminal(QStringLiteral("first"));
    startTerminal(QStringLiteral("second"));
    ASSERT_TRUE(becomesActive(QStringLiteral("second")));
    EXPECT_TRUE(becomesTrue([&] {
        const auto active = foreign_->active();
        return active && active->appId == QStringLiteral("second") &&
               foreign_->hasKeyboard(active->id);
    }));
    EXPECT_TRUE(foreign_->isAnyActive());
}

TEST_F(SwayTest, ACompositorThatEndsTakesNothingAlong) {
    startSway();
    hold();
    compositor_->process().kill();
    EXPECT_TRUE(becomesTrue([&] { return !ipc_->isConnected() && connection_->isLost(); }));
    EXPECT_EQ(hotKey_->keys(), std::nullopt);
    EXPECT_EQ(toplevels_->active(), std::nullopt);
}

TEST_F(SwayTest, NobodyHasTheKeyboardWhileAWindowOfOursHasIt) {
    startSway();
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    const QByteArray id = toplevels_->active()->id;
    int changes = 0;
    QObject::connect(toplevels_.get(), &wayland::Toplevels::changed, toplevels_.get(),
                     [&] { ++changes; });
    {
        const OwnFocus focus;
        EXPECT_FALSE(toplevels_->hasKeyboard(id));
        EXPECT_EQ(toplevels_->active()->id, id);
        EXPECT_GT(changes, 0);
        changes = 0;
    }
    EXPECT_TRUE(becomesTrue([&] { return changes > 0 && toplevels_->hasKeyboard(id); }));
}

#ifdef COVERING_SURFACE
TEST_F(SwayTest, NobodyHasTheKeyboardWhileAnotherSurfaceHasIt) {
    startSway();
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    const QByteArray id = toplevels_->active()->id;
    auto &surface = cover();
    EXPECT_TRUE(becomesTrue([&] { return !toplevels_->hasKeyboard(id); }, 5s));
    ASSERT_TRUE(toplevels_->active().has_value());
    EXPECT_EQ(toplevels_->active()->id, id);
    surface.end();
    EXPECT_TRUE(becomesTrue([&] { return toplevels_->hasKeyboard(id); }));
    EXPECT_EQ(toplevels_->active()->id, id);
}
#endif

} // namespace

} // namespace quillmender::wlroots

int main(int argc, char **argv) {
    return quillmender::wlroots::runWlrootsTests(
        argc, argv, {QStringLiteral("sway"), QStringLiteral("foot"), QStringLiteral("setpriv")});
}
