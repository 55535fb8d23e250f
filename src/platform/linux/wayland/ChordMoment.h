#pragma once

#include <QObject>

namespace quillmender::wayland {

/// When chords are typed. What a program asks of the clipboard before that is no paste of it.
class ChordMoment : public QObject {
    Q_OBJECT

  public:
    /// To be called by whoever types, right before the key that makes the chord goes down.
    void note() {
        ++count_;
        Q_EMIT noted();
    }

    /// How many chords there have been.
    quint64 count() const { return count_; }

  Q_SIGNALS:
    void noted();

  private:
    quint64 count_ = 0;
};

} // namespace quillmender::wayland
