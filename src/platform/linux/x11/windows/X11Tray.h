#pragma once

#include "platform/linux/WindowSystemTray.h"

#include <QAbstractNativeEventFilter>
#include <QtGlobal>

namespace quillmender::x11 {

/// The X server's System Tray Protocol, over the toolkit's connection: the toolkit's own look at
/// the tray must not be older than ours.
class X11Tray : public WindowSystemTray, private QAbstractNativeEventFilter {
  public:
    bool isThere() override;
    void onAnnouncement(std::function<void()> listener) override;

  private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

    std::function<void()> listener_;
    quint32 managerAtom_ = 0;
};

} // namespace quillmender::x11
