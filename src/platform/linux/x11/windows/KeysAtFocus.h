#pragma once

#include <QAbstractNativeEventFilter>
#include <QSet>
#include <xcb/xcb.h>

namespace quillmender::x11 {

/// The keys that are down when a window of the toolkit gets the keyboard. The server tells them
/// right behind the focus, on the toolkit's own connection, so that no key event is between.
class KeysAtFocus : public QAbstractNativeEventFilter {
  public:
    KeysAtFocus();
    ~KeysAtFocus() override;
    Q_DISABLE_COPY_MOVE(KeysAtFocus)

    /// Has the server tell for that window from now on. The toolkit has made it.
    void watch(xcb_window_t window);

    /// Key codes, as they were when the window got the keyboard last.
    QSet<quint32> of(xcb_window_t window) const;

    /// Whether the server has the key down now, whatever events are still on their way.
    static bool isDown(quint32 code);

    bool nativeEventFilter(const QByteArray &kind, void *message, qintptr *result) override;

  private:
    xcb_window_t focused_ = XCB_WINDOW_NONE; ///< what is told next belongs to it
    xcb_window_t window_ = XCB_WINDOW_NONE;
    QSet<quint32> down_; ///< as that window got the keyboard
};

} // namespace quillmender::x11
