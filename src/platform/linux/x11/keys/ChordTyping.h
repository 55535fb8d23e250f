#pragma once

#include "platform/Chords.h"
#include "platform/linux/FocusContext.h"
#include "platform/linux/x11/keys/ChordKeys.h"
#include "platform/linux/x11/keys/HeldKeys.h"
#include "platform/linux/x11/keys/TargetWindow.h"

#include <chrono>

namespace quillmender::x11 {

class X11LentText;

/// One chord, from the order to the keys; it knows all that belongs to it, and nobody else does.
class ChordTyping {
  public:
    /// Nothing stays down in `keys` when it is done or given up.
    ChordTyping(const ChordSurroundings &around, std::shared_ptr<ChordKeys> keys, Chord chord,
                const ChordTarget &into, std::shared_ptr<const X11RunningApplication> application);

    /// Absent when the chord is out.
    QCoro::Task<Obstacle> run();

  private:
    bool isPaste() const { return chord_ == Chord::paste; }
    std::chrono::milliseconds patience() const;
    xkb_keysym_t modifier() const;
    xkb_keysym_t key() const;

    Obstacle forbids() const;
    QCoro::Task<Obstacle> reachTarget();
    /// Makes the target one that a paste replaces the selection of, and the text one for it.
    QCoro::Task<Obstacle> prepareTarget();
    QCoro::Task<Obstacle> prepareTk();
    QCoro::Task<Obstacle> freeKeyboard();
    /// The modifier first: an application that decides at once what a key is for, and acts when
    /// the key comes back, would act on the modifier that comes back meanwhile as well.
    QCoro::Task<Obstacle> holdModifier();
    Obstacle type();
    Obstacle press();

    ChordSurroundings around_;
    std::shared_ptr<ChordKeys> keys_;
    HeldKeys heldKeys_;
    Chord chord_;
    TargetWindow target_;
    std::shared_ptr<X11LentText> text_;
    std::shared_ptr<KeyRelay> relay_;
    bool isSecret_ = false;
    bool isTerminal_ = false;
    bool deletesFirst_ = false;
};

} // namespace quillmender::x11
