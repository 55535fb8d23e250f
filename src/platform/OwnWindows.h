#pragma once

#include <QSet>
#include <QtGlobal>

#include <cstddef>
#include <functional>
#include <memory>

class QScreen;
class QWindow;

namespace quillmender {

/// A window that is out of the way while something is typed into another application. It comes back
/// when this object goes, where it was and as it was; the keyboard stays where the user has it, if
/// the window system leaves it there.
class SteppedAside {
  public:
    SteppedAside() = default;
    SteppedAside(const SteppedAside &) = delete;
    SteppedAside &operator=(const SteppedAside &) = delete;
    virtual ~SteppedAside() = default;

    /// The window stays hidden instead, until somebody shows it.
    virtual void stayAway() = 0;
};

/// The standing of this program's own windows on the desktop. A window is handed over once its
/// native window has been made.
class OwnWindows {
  public:
    OwnWindows() = default;
    OwnWindows(const OwnWindows &) = delete;
    OwnWindows &operator=(const OwnWindows &) = delete;
    virtual ~OwnWindows() = default;

    /// No Dock icon, no application menu. Once, before any window.
    virtual void setAccessoryPolicy() = 0;

    /// The floating panel: above others, on all desktops, a dialog, in no task bar. To be called
    /// whenever its native window was made.
    virtual void applyPanelAttributes(QWindow *window) = 0;

    /// The same for an ordinary titled window of fixed size. Nothing to do where the toolkit's own
    /// flags say all of it.
    virtual void applyWindowAttributes(QWindow *window) = 0;

    /// Whether a window may be seen through in part, as a compositor has it. That may change.
    virtual bool areBlended() { return true; }

    /// The points at the top of a panel with its attributes that the frame covers. What is shown
    /// belongs below them.
    virtual int coveredHeight(QWindow *panel) {
        Q_UNUSED(panel)
        return 0;
    }

    /// Whether the window system draws a frame around the panel. Where it does not the panel draws
    /// its own edge.
    virtual bool framesPanel() { return true; }

    /// The screen that the user works on, where the window system tells of it; null where it has to
    /// be guessed by the pointer.
    virtual QScreen *screenInUse() { return nullptr; }

    /// Has the system provide the memory of a window's picture now, rather than page by page when
    /// it is first drawn. What is in it stays. Nothing where the system cannot.
    virtual void provideMemory(void *begin, std::size_t bytes) {
        Q_UNUSED(begin)
        Q_UNUSED(bytes)
    }

    /// Has the window system hear now what the toolkit has been told of its windows, which the
    /// toolkit may keep until it waits for events. Does not wait.
    virtual void flush() {}

    /// Gives the window the front and the keyboard focus, whatever application has them now. They
    /// go back, where the window system does not see to it, when no window is left on the screen.
    virtual void activate(QWindow *window) = 0;

    /// Has `tell` called with true when the window that was activated last has waited for the
    /// keyboard in vain, and with false when it comes after all or the window goes. Never called
    /// where the window system always gives it. A later call takes the place of this one.
    virtual void watchForKeyboard(std::function<void(QWindow *window, bool isWithheld)>) {}

    /// The native codes of the keys that were down when the window got the keyboard last. Nothing
    /// where the toolkit says of such a key that it only repeats.
    virtual QSet<quint32> keysDownAtFocus(QWindow *) { return {}; }

    /// Whether the key with that native code is down now; false where nobody tells.
    virtual bool isKeyDown(quint32) { return false; }

    /// Hides the window where the source application gets the focus back only then. Null where it
    /// gets it with the window on screen: nothing is hidden.
    virtual std::unique_ptr<SteppedAside> stepAside(QWindow *window) = 0;
};

} // namespace quillmender
