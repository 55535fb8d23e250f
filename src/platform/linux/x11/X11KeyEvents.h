#pragma once

#include "platform/KeyEvents.h"
#include "platform/linux/FocusRecord.h"
#include "platform/linux/x11/ChordKeys.h"
#include "platform/linux/x11/HeldKeys.h"
#include "platform/linux/x11/PasteRecord.h"
#include "platform/linux/x11/X11Keymap.h"

#include <QTimer>

#include <chrono>
#include <optional>

namespace quillmender {

class ActiveWindow;
class ChordWatch;
class WindowPing;
class X11FrontmostSource;
class X11Pasteboard;
class X11RunningApplication;

/// Chords through the XTest extension, by the key codes of their symbols in the present keyboard
/// map.
class X11KeyEvents : public KeyEvents {
  public:
    /// `pastes` is written and `chords` started, the rest is asked.
    X11KeyEvents(X11Connection &connection, X11Keymap &keymap, ActiveWindow &activeWindow,
                 X11FrontmostSource &frontmost, X11Pasteboard &pasteboard, WindowPing &ping,
                 ChordWatch &chords, PasteRecord &pastes);

    QCoro::Task<ChordReadiness> prepareChord(RunningApplicationRef target, Chord chord,
                                             ChordContextRef context) override;
    KeyEventSourceRef createSource(qint32 state) override;
    KeyEventRef createKeyboardEvent(const KeyEventSourceRef &source, quint16 keyCode,
                                    bool keyDown) override;
    void setFlags(const KeyEventRef &event, quint64 flags) override;
    bool post(quint32 tap, const KeyEventRef &event) override;

  private:
    /// Whether the chord can be typed as far as Tk is concerned.
    QCoro::Task<bool> prepareTk(xcb_window_t window, Chord chord);
    /// Whether a terminal can be pasted into: the text is one for terminals, and theirs to take.
    QCoro::Task<bool> lendToTerminal(xcb_window_t window);
    QCoro::Task<bool> waitUntilInFront(xcb_window_t window, std::chrono::milliseconds limit);
    xkb_keysym_t modifierOf(Chord chord) const;
    /// The modifier first: an application that decides at once what a key is for, and acts when
    /// the key comes back, would act on the modifier that comes back meanwhile as well.
    QCoro::Task<bool> holdModifier(Chord chord, xcb_window_t window, KeyDetour *detour);
    /// False when nothing was pressed.
    bool pressAhead(xkb_keysym_t modifier);
    bool press(quint16 keyCode);
    bool isTargetInFront() const;
    void release(quint16 keyCode);

    X11Connection &connection_;
    X11Keymap &keymap_;
    ActiveWindow &activeWindow_;
    X11FrontmostSource &frontmost_;
    X11Pasteboard &pasteboard_;
    WindowPing &ping_;
    ChordWatch &chords_;
    PasteRecord &pastes_;
    HeldKeys heldKeys_;
    std::shared_ptr<const X11RunningApplication> target_;
    bool isTerminal_ = false;
    bool deletesFirst_ = false;
    ChordKeys keys_;
    std::optional<quint16> pressed_;
    QTimer abandonment_;
};

} // namespace quillmender
