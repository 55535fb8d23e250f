#pragma once

#include "platform/HotKeys.h"

namespace quillmender {

/// No global shortcuts: the handler cannot be installed.
class NoneHotKeys : public HotKeys {
  public:
    EventHandlerInstallation installEventHandler(HotKeyEventHandler, EventTypeSpec,
                                                 void *) override {
        return {eventNotHandledErr, 0};
    }
    qint32 removeEventHandler(EventHandlerRef) override { return eventNotHandledErr; }
    HotKeyRegistration registerHotKey(quint32, quint32, HotKeyId, quint32) override {
        return {eventNotHandledErr, 0};
    }
    qint32 unregisterHotKey(HotKeyRef) override { return eventNotHandledErr; }
};

} // namespace quillmender
