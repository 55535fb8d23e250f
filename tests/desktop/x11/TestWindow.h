#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QObject>

#include <vector>

namespace quillmender::x11 {

/// A mapped window that records the key events which reach it.
class TestWindow : public QObject {
  public:
    struct Key {
        bool isDown;
        xcb_keycode_t code;
        quint16 state;
    };

    /// The server knows it at once, so that other connections may speak of it.
    explicit TestWindow(X11Connection &connection, const char *wmClass = "editor");
    ~TestWindow() override;

    xcb_window_t id() const { return id_; }
    const std::vector<Key> &keys() const { return keys_; }

    /// The two strings of WM_CLASS, each ended by a null character.
    void setClass(const QByteArray &names);
    void map();
    void setFocus();
    bool isViewable() const;
    bool hasFocus() const;

  private:
    X11Connection &connection_;
    xcb_window_t id_;
    std::vector<Key> keys_;
};

} // namespace quillmender::x11
