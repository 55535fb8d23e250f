#pragma once

#include "desktop/harness/Desktop.h"

#include <QStringList>

namespace quillmender {

/// An application without any text: a window that has the keyboard and notes each key.
class KeyRecorder {
  public:
    explicit KeyRecorder(harness::Desktop &desktop);
    KeyRecorder(const KeyRecorder &) = delete;
    KeyRecorder &operator=(const KeyRecorder &) = delete;
    ~KeyRecorder();

    xcb_window_t window() const { return window_; }

    /// Presses so far, in their order: the names of the modifiers in effect that are neither Caps
    /// Lock nor Num Lock, and the key's: "Control+c", "space". Modifier keys themselves count not.
    QStringList presses();

  private:
    QString describe(const xcb_key_press_event_t &press);

    harness::XcbConnection connection_;
    xcb_window_t window_;
    QStringList presses_;
};

} // namespace quillmender
