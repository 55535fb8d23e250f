#pragma once

#include "platform/linux/wayland/CoreProxies.h"

#include <QObject>

namespace quillmender::wayland {

/// One question to which the compositor has nothing to answer but that it has come to it: what was
/// asked before has then been answered.
class RoundTrip : public QObject {
    Q_OBJECT

  public:
    explicit RoundTrip(wl_display *display);

    bool isOver() const { return callback_ == nullptr; }

  Q_SIGNALS:
    void over();

  private:
    static void handleDone(void *self, wl_callback *callback, uint32_t serial);

    Proxy<wl_callback> callback_;
};

} // namespace quillmender::wayland
