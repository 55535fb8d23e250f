#pragma once

#include "platform/Chords.h"
#include "platform/linux/x11/keys/ChordSurroundings.h"

#include <QList>
#include <QObject>

#include <memory>

namespace quillmender::x11 {

class ChordKeys;

/// Chords through the XTest extension, by the key codes of their symbols in the present keyboard
/// map; one after another, in the order in which they were asked for.
class X11Chords : public QObject, public Chords {
    Q_OBJECT

  public:
    explicit X11Chords(const ChordSurroundings &around);
    /// Lets go of the keys of a chord that is under way, which is not typed any more.
    ~X11Chords() override;

    QCoro::Task<ChordResult> type(Chord chord, ChordTarget into) override;

  Q_SIGNALS:
    void finished();

  private:
    ChordSurroundings around_;
    std::shared_ptr<ChordKeys> keys_;
    QList<quint64> turns_; ///< of the chord under way and of those that wait
    quint64 asked_ = 0;
};

} // namespace quillmender::x11
