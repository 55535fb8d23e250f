#include "platform/linux/x11/X11KeyEvents.h"

#include "platform/SignalWait.h"
#include "platform/linux/terminal/ProcessTable.h"
#include "platform/linux/terminal/TerminalForeground.h"
#include "platform/linux/x11/ActiveWindow.h"
#include "platform/linux/x11/ChordWatch.h"
#include "platform/linux/x11/ClientIdentity.h"
#include "platform/linux/x11/TkWindows.h"
#include "platform/linux/x11/WindowPing.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11FrontmostSource.h"
#include "platform/linux/x11/X11Log.h"
#include "platform/linux/x11/X11Pasteboard.h"
#include "platform/linux/x11/X11RunningApplication.h"

#include <QDeadlineTimer>

namespace quillmender {

using namespace std::chrono_literals;

namespace {

class TestSource : public KeyEventSource {};

class TestEvent : public KeyEvent {
  public:
    TestEvent(quint16 code, bool down) : keyCode(code), isDown(down) {}

    quint16 keyCode;
    bool isDown;
    quint64 flags = 0;
};

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

constexpr std::chrono::milliseconds detourPatience = 250ms;

/// How long a window manager may take to bring an application to the front, and the application to
/// attend to its events. A paste is worth more: the user has waited for its text already.
std::chrono::milliseconds patience(Chord chord) {
    return chord == Chord::paste ? 1000ms : 300ms;
}

} // namespace

X11KeyEvents::X11KeyEvents(X11Connection &connection, X11Keymap &keymap, ActiveWindow &activeWindow,
                           X11FrontmostSource &frontmost, X11Pasteboard &pasteboard,
                           WindowPing &ping, ChordWatch &chords, PasteRecord &pastes)
    : connection_(connection),
      keymap_(keymap),
      activeWindow_(activeWindow),
      frontmost_(frontmost),
      pasteboard_(pasteboard),
      ping_(ping),
      chords_(chords),
      pastes_(pastes),
      heldKeys_(connection, keymap),
      keys_(connection, keymap) {
    abandonment_.setSingleShot(true);
    abandonment_.callOnTimeout([this] { keys_.release(); });
}

QCoro::Task<ChordReadiness> X11KeyEvents::prepareChord(RunningApplicationRef target, Chord chord,
                                                       ChordContextRef context) {
    target_.reset();
    const auto application = std::dynamic_pointer_cast<const X11RunningApplication>(target);
    if (!application || !connection_.hasTest())
        co_return ChordReadiness::withheld;
    if (frontmost_.isCommandEditorWindow(application->window())) {
        qCInfo(x11Log, "window 0x%x has other keys", application->window());
        co_return ChordReadiness::withheld;
    }
    const auto focus = std::dynamic_pointer_cast<const FocusRecord>(context);
    const auto role = focus ? focus->role : FocusRecord::Role::unknown;
    isTerminal_ =
        role == FocusRecord::Role::terminal || frontmost_.isTerminalWindow(application->window());
    const bool isSecret = role == FocusRecord::Role::password;
    if (chord == Chord::copy && (isTerminal_ || isSecret))
        co_return ChordReadiness::withheld;
    const bool isInFront = co_await waitUntilInFront(application->window(), patience(chord));
    if (!isInFront)
        co_return ChordReadiness::withheld;
    // One that hangs would copy or paste whenever it comes round, long after everything is over.
    const bool isAttentive = co_await ping_.isAttentive(application->window(), patience(chord));
    if (!isAttentive) {
        qCInfo(x11Log, "window 0x%x does not attend to its events", application->window());
        co_return ChordReadiness::withheld;
    }
    const std::shared_ptr<KeyDetour> detour = focus ? focus->detour : nullptr;
    if (detour) {
        const bool isClear = co_await detour->isPassed(patience(chord));
        if (!isClear) {
            qCInfo(x11Log, "keys for window 0x%x are stuck", application->window());
            co_return ChordReadiness::withheld;
        }
    }
    const bool takesChord = co_await prepareTk(application->window(), chord);
    if (!takesChord)
        co_return ChordReadiness::withheld;
    if (chord == Chord::paste && isTerminal_) {
        const bool isLent = co_await lendToTerminal(application->window());
        if (!isLent)
            co_return ChordReadiness::withheld;
    }
    const bool isReleased = co_await heldKeys_.release();
    // The user may have gone elsewhere during the wait.
    target_ = application;
    if (!isReleased || !isTargetInFront())
        co_return ChordReadiness::withheld;
    if (detour) {
        const bool isModifierBack =
            co_await holdModifier(chord, application->window(), detour.get());
        if (!isModifierBack)
            co_return ChordReadiness::withheld;
    }
    co_return ChordReadiness::ready;
}

xkb_keysym_t X11KeyEvents::modifierOf(Chord chord) const {
    return chord == Chord::paste && isTerminal_ ? XKB_KEY_Shift_L : XKB_KEY_Control_L;
}

QCoro::Task<bool> X11KeyEvents::holdModifier(Chord chord, xcb_window_t window, KeyDetour *detour) {
    if (!pressAhead(modifierOf(chord)))
        co_return isTargetInFront();
    // Toolkits may answer before they handle what came with the question.
    bool isBack = true;
    for (int i = 0; i < 2 && isBack; ++i)
        isBack = co_await ping_.isAttentive(window, detourPatience);
    if (isBack)
        isBack = co_await detour->isPassed(detourPatience);
    if (!isBack)
        keys_.release();
    // Who has asked for the chord types it before anything else happens, or never.
    abandonment_.start();
    co_return isBack;
}

bool X11KeyEvents::pressAhead(xkb_keysym_t modifier) {
    const HeldServer server(connection_);
    return isTargetInFront() && keys_.hold(modifier);
}

bool X11KeyEvents::isTargetInFront() const {
    return target_ && activeWindow_.isInFront(target_->window()) &&
           isStillItself(connection_, *target_);
}

QCoro::Task<bool> X11KeyEvents::prepareTk(xcb_window_t window, Chord chord) {
    deletesFirst_ = false;
    if (!isTkWindow(connection_, window))
        co_return true;
    const std::optional<QString> selected = co_await frontmost_.primarySelection();
    if (chord == Chord::copy)
        co_return !isMask(selected.value_or(QString()));
    // What was captured is selected still, or its place is not known any more.
    deletesFirst_ = selected && !selected->isEmpty();
    co_return deletesFirst_;
}

QCoro::Task<bool> X11KeyEvents::lendToTerminal(xcb_window_t window) {
    const auto takesLineEnds = [&connection = connection_, window] {
        // What a window says of its process may be about another machine.
        const qint64 emulator = processOfClient(connection, window);
        return emulator != 0 && hasEditorsOnly(emulator);
    };
    if (isStopped(processOfClient(connection_, window)))
        co_return false;
    co_return co_await pasteboard_.lendToTerminal(takesLineEnds);
}

QCoro::Task<bool> X11KeyEvents::waitUntilInFront(xcb_window_t window,
                                                 std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit, Qt::PreciseTimer);
    while (!activeWindow_.isInFront(window)) {
        if (deadline.hasExpired()) {
            qCInfo(x11Log, "window 0x%x did not come to the front", window);
            co_return false;
        }
        // The focus may follow the window manager's announcement, which is all that is reported.
        co_await SignalWait(&activeWindow_, &ActiveWindow::changed, 10ms);
    }
    co_return true;
}

KeyEventSourceRef X11KeyEvents::createSource(qint32) {
    if (!connection_.hasTest() || connection_.isLost())
        return nullptr;
    return std::make_shared<TestSource>();
}

KeyEventRef X11KeyEvents::createKeyboardEvent(const KeyEventSourceRef &source, quint16 keyCode,
                                              bool keyDown) {
    const bool isKnown = keyCode == keycode::c || keyCode == keycode::v;
    if (!source || !isKnown)
        return nullptr;
    return std::make_shared<TestEvent>(keyCode, keyDown);
}

void X11KeyEvents::setFlags(const KeyEventRef &event, quint64 flags) {
    if (const auto own = std::dynamic_pointer_cast<TestEvent>(event))
        own->flags = flags;
}

bool X11KeyEvents::post(quint32, const KeyEventRef &event) {
    const auto own = std::dynamic_pointer_cast<TestEvent>(event);
    if (!own || own->flags != commandFlag)
        return false;
    if (own->isDown)
        return press(own->keyCode);
    release(own->keyCode);
    return true;
}

bool X11KeyEvents::press(quint16 keyCode) {
    const HeldServer server(connection_);
    if (!isTargetInFront()) {
        keys_.release();
        return false;
    }
    const bool isPaste = keyCode == keycode::v;
    const bool isInsert = isPaste && isTerminal_;
    // Later a terminal would paste what is there by then, with the line ends that it has.
    if (isInsert &&
        (!pasteboard_.isLent() || isStopped(processOfClient(connection_, target_->window())))) {
        qCInfo(x11Log, "the terminal was stopped, or somebody else took a selection");
        keys_.release();
        return false;
    }
    const xkb_keysym_t modifier = modifierOf(isPaste ? Chord::paste : Chord::copy);
    const xkb_keysym_t letter = isPaste ? XKB_KEY_v : XKB_KEY_c;
    const xkb_keysym_t key = isInsert ? xkb_keysym_t{XKB_KEY_Insert} : letter;
    // Asked before anything is deleted for the sake of the paste.
    if (!keys_.canPress(modifier, key)) {
        qCWarning(x11Log, "no key for chord %d in the keyboard map", keyCode);
        keys_.release();
        return false;
    }
    if (isPaste && deletesFirst_)
        keys_.tap(XKB_KEY_Delete);
    keys_.press(modifier, key);
    pressed_ = keyCode;
    if (isPaste) {
        ++pastes_.count;
        pastes_.window = target_->window();
    }
    return true;
}

void X11KeyEvents::release(quint16 keyCode) {
    if (pressed_ != keyCode)
        return;
    pressed_.reset();
    keys_.release();
    chords_.start(target_->window(), keyCode == keycode::v ? Chord::paste : Chord::copy);
}

} // namespace quillmender
