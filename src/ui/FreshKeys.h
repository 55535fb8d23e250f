#pragma once

#include <QSet>

#include <functional>
#include <optional>

class QKeyEvent;

namespace quillmender {

/// Tells the keys that were pressed in a window from those that were already down when it got the
/// keyboard: such a key repeats into the window and is released there, and means another one.
class FreshKeys {
  public:
    /// What the window system knows of keys, by their native codes.
    struct Keyboard {
        /// Those that were down when the window got the keyboard; asked at the first key after it.
        std::function<QSet<quint32>()> downAtFocus;
        std::function<bool(quint32)> isDown; ///< now
    };

    explicit FreshKeys(Keyboard keyboard);

    /// Whether the event belongs to a press that the window has seen the beginning of. To be asked
    /// about every press and release of the window, in their order.
    bool isFresh(const QKeyEvent &event);

    /// The window has lost the keyboard: what is down now is not its own any more.
    void forget();

  private:
    Keyboard keyboard_;
    std::optional<QSet<quint32>> foreign_; ///< pressed elsewhere, and not released since
    QSet<quint64> down_;
};

} // namespace quillmender
