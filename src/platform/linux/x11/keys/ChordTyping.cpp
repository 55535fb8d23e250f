#include "platform/linux/x11/keys/ChordTyping.h"

#include "platform/linux/MaskedText.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/keys/ChordWatch.h"
#include "platform/linux/x11/keys/TerminalPaste.h"
#include "platform/linux/x11/selection/X11LentText.h"
#include "platform/linux/x11/windows/TkWindows.h"
#include "platform/linux/x11/windows/WindowPing.h"
#include "platform/linux/x11/windows/X11FrontmostSource.h"

#include <QScopeGuard>

namespace quillmender::x11 {

using namespace std::chrono_literals;

namespace {

/// While it lives nobody else changes anything: keys go where a check under it says.
class HeldServer {
  public:
    explicit HeldServer(const X11Connection &connection) : connection_(connection) {
        xcb_grab_server(connection_.xcb());
    }
    HeldServer(const HeldServer &) = delete;
    HeldServer &operator=(const HeldServer &) = delete;
    ~HeldServer() {
        xcb_ungrab_server(connection_.xcb());
        xcb_flush(connection_.xcb());
    }

  private:
    const X11Connection &connection_;
};

constexpr std::chrono::milliseconds relayPatience = 250ms;

} // namespace

ChordTyping::ChordTyping(const ChordSurroundings &around, std::shared_ptr<ChordKeys> keys,
                         Chord chord, const ChordTarget &into,
                         std::shared_ptr<const X11RunningApplication> application)
    : around_(around),
      keys_(std::move(keys)),
      heldKeys_(around.connection, around.keymap),
      chord_(chord),
      target_(around, std::move(application)),
      text_(std::dynamic_pointer_cast<X11LentText>(into.text)) {
    const auto focus = std::dynamic_pointer_cast<const FocusContext>(into.context);
    const auto role = focus ? focus->role : FocusContext::Role::unknown;
    relay_ = focus ? focus->relay : nullptr;
    isSecret_ = role == FocusContext::Role::password;
    isTerminal_ =
        role == FocusContext::Role::terminal || around_.frontmost.isTerminalWindow(target_.id());
}

/// How long a window manager may take to bring an application to the front, and the application to
/// attend to its events. A paste is worth more: the user has waited for its text already.
std::chrono::milliseconds ChordTyping::patience() const {
    return isPaste() ? 1000ms : 300ms;
}

xkb_keysym_t ChordTyping::modifier() const {
    return isPaste() && isTerminal_ ? XKB_KEY_Shift_L : XKB_KEY_Control_L;
}

xkb_keysym_t ChordTyping::key() const {
    if (!isPaste())
        return XKB_KEY_c;
    return isTerminal_ ? XKB_KEY_Insert : XKB_KEY_v;
}

QCoro::Task<Obstacle> ChordTyping::run() {
    const auto release = qScopeGuard([keys = keys_] { keys->release(); });
    Obstacle obstacle = forbids();
    if (!obstacle)
        obstacle = co_await reachTarget();
    if (!obstacle)
        obstacle = co_await prepareTarget();
    if (!obstacle)
        obstacle = co_await freeKeyboard();
    if (!obstacle)
        obstacle = type();
    co_return obstacle;
}

Obstacle ChordTyping::forbids() const {
    if (around_.frontmost.isCommandEditorWindow(target_.id()))
        return target_.name() + QStringLiteral(" has other keys");
    if (!isPaste() && isTerminal_)
        return QStringLiteral("the copy chord is an interrupt in a terminal");
    if (!isPaste() && isSecret_)
        return QStringLiteral("the focus is in a password field");
    if (isPaste() && !text_)
        return QStringLiteral("nothing was lent that could be pasted");
    return std::nullopt;
}

QCoro::Task<Obstacle> ChordTyping::reachTarget() {
    Obstacle obstacle = co_await target_.reach(patience());
    if (obstacle || !relay_)
        co_return obstacle;
    const bool isClear = co_await relay_->waitUntilPassed(patience());
    if (!isClear)
        obstacle = QStringLiteral("keys for ") + target_.name() + QStringLiteral(" are stuck");
    co_return obstacle;
}

QCoro::Task<Obstacle> ChordTyping::prepareTarget() {
    Obstacle obstacle = co_await prepareTk();
    if (!obstacle && isPaste() && isTerminal_)
        obstacle = co_await lendToTerminal(around_.connection, text_, target_.id());
    co_return obstacle;
}

QCoro::Task<Obstacle> ChordTyping::prepareTk() {
    if (!isTkWindow(around_.connection, target_.id()))
        co_return std::nullopt;
    const std::optional<QString> selected = co_await around_.frontmost.primarySelection();
    if (isPaste()) {
        // What was captured is selected still, or its place is not known any more.
        deletesFirst_ = selected && !selected->isEmpty();
        if (!deletesFirst_)
            co_return target_.name() + QStringLiteral(" has nothing selected that goes");
    } else if (isMask(selected.value_or(QString()))) {
        co_return QStringLiteral("what is selected is masked");
    }
    co_return std::nullopt;
}

QCoro::Task<Obstacle> ChordTyping::freeKeyboard() {
    const bool isReleased = co_await heldKeys_.release();
    if (!isReleased)
        co_return QStringLiteral("modifiers stay down");
    // The user may have gone elsewhere during the wait.
    Obstacle obstacle = target_.keepsKeysAway();
    if (!obstacle && relay_)
        obstacle = co_await holdModifier();
    co_return obstacle;
}

QCoro::Task<Obstacle> ChordTyping::holdModifier() {
    bool isHeld = false;
    {
        const HeldServer server(around_.connection);
        if (Obstacle obstacle = target_.keepsKeysAway())
            co_return obstacle;
        isHeld = keys_->hold(modifier());
    }
    if (!isHeld)
        co_return std::nullopt;
    // Toolkits may answer before they handle what came with the question.
    bool isBack = true;
    for (int i = 0; i < 2 && isBack; ++i)
        isBack = co_await around_.ping.waitForAttention(target_.id(), relayPatience);
    if (isBack)
        isBack = co_await relay_->waitUntilPassed(relayPatience);
    if (!isBack)
        co_return QStringLiteral("the modifier is stuck on its way to ") + target_.name();
    co_return std::nullopt;
}

Obstacle ChordTyping::type() {
    if (Obstacle obstacle = press())
        return obstacle;
    keys_->release();
    around_.watch.start(target_.id(), chord_);
    return std::nullopt;
}

Obstacle ChordTyping::press() {
    const HeldServer server(around_.connection);
    if (Obstacle obstacle = target_.keepsKeysAway())
        return obstacle;
    if (isPaste() && !text_->isOffered())
        return QStringLiteral("the pasteboard was replaced meanwhile");
    if (isPaste() && isTerminal_) {
        if (Obstacle obstacle = forbidsTerminalPaste(around_.connection, *text_, target_.id()))
            return obstacle;
    }
    // Asked before anything is deleted for the sake of the paste.
    if (!keys_->canPress(modifier(), key()))
        return QStringLiteral("there are no keys for the chord");
    if (deletesFirst_)
        keys_->tap(XKB_KEY_Delete);
    keys_->press(modifier(), key());
    if (isPaste())
        text_->typeChord(target_.id());
    return std::nullopt;
}

} // namespace quillmender::x11
