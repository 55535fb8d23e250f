#pragma once

#include "platform/Chords.h"
#include "platform/linux/FocusContext.h"
#include "platform/linux/Obstacle.h"
#include "platform/linux/wayland/KeyTyping.h"

#include <QPointer>

#include <chrono>
#include <functional>
#include <memory>

namespace quillmender {
class PasteText;
}

namespace quillmender::wayland {

class ChordMoment;
class CopyWatch;
class Toplevels;
class WaylandFrontmostSource;
class WaylandRunningApplication;

/// Whom a chord asks on its way to the application, and who is told that it is out. All outlive the
/// chords.
struct WaylandChordSurroundings {
    Toplevels &toplevels;
    WaylandFrontmostSource &frontmost;
    KeyTyping &typing;
    ChordMoment &moment;
    CopyWatch &copies;
    /// Whether the X server beside the compositor has learned what Wayland programs offer.
    std::function<QCoro::Task<bool>(std::chrono::milliseconds limit)> waitForBridge{};
};

/// One chord, from the order to the keys; it knows all that belongs to it, and nobody else does.
class WaylandChordTyping {
  public:
    /// When `chords` has gone, what is around has gone too, and nothing is typed any more.
    WaylandChordTyping(const WaylandChordSurroundings &around, const QObject *chords, Chord chord,
                       ChordTarget into,
                       std::shared_ptr<const WaylandRunningApplication> application);

    QCoro::Task<ChordResult> run();

  private:
    bool isPaste() const { return chord_ == Chord::paste; }
    std::chrono::milliseconds patience() const;
    TypedKeys keys() const;
    QString name() const;

    Obstacle forbids() const;
    Obstacle isOver() const;
    QCoro::Task<Obstacle> reachTarget();
    /// What hangs would copy or paste long afterwards.
    QCoro::Task<Obstacle> findAttention() const;
    QCoro::Task<bool> comesToTheFront() const;
    /// Makes the text one for the target.
    QCoro::Task<Obstacle> prepareText();
    /// Until the target has heard of the text.
    QCoro::Task<Obstacle> waitForServer();
    /// Why keys that are typed now would not do what is meant.
    Obstacle speaksAgainst() const;
    QCoro::Task<ChordResult> type();

    WaylandChordSurroundings around_;
    QPointer<const QObject> chords_;
    Chord chord_;
    ChordTarget into_;
    std::shared_ptr<const WaylandRunningApplication> application_;
    std::shared_ptr<PasteText> text_;
    std::shared_ptr<KeyRelay> relay_;
    std::shared_ptr<ApplicationPulse> pulse_;
    bool isSecret_ = false;
    bool isTerminal_ = false;
};

} // namespace quillmender::wayland
