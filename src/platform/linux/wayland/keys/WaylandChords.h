#pragma once

#include "platform/Chords.h"
#include "platform/linux/wayland/keys/WaylandChordTyping.h"

#include <QList>
#include <QObject>

namespace quillmender::wayland {

/// Chords into the window that has the keyboard, one after another in the order in which they were
/// asked for. A lent text that is a PasteText too is watched until the keys, and terminals take no
/// other.
class WaylandChords : public QObject, public Chords {
    Q_OBJECT

  public:
    explicit WaylandChords(const WaylandChordSurroundings &around) : around_(around) {}

    QCoro::Task<ChordResult> type(Chord chord, ChordTarget into) override;

  Q_SIGNALS:
    void finished();

  private:
    WaylandChordSurroundings around_;
    QList<quint64> turns_; ///< of the chord under way and of those that wait
    quint64 asked_ = 0;
};

} // namespace quillmender::wayland
