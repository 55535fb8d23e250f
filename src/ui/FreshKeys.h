#pragma once

#include <QSet>

class QKeyEvent;

namespace quillmender {

/// Tells the keys that were pressed in a window from those that were already down when it got the
/// keyboard: such a key repeats into the window and is released there, and means another one.
class FreshKeys {
  public:
    /// Whether the event belongs to a press that the window has seen the beginning of. To be asked
    /// about every press and release of the window, in their order.
    bool isFresh(const QKeyEvent &event);

    /// The window has lost the keyboard: what is down now is not its own any more.
    void forget();

  private:
    struct Release {
        quint64 key = 0;
        quint64 time = 0; ///< of the window system, in milliseconds
        bool wasDown = false;
    };

    QSet<quint64> down_;
    Release released_;
};

} // namespace quillmender
