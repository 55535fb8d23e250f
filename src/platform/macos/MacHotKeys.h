#pragma once

#include "platform/HotKeys.h"

#include <map>
#include <memory>

namespace quillmender {

/// The Carbon event manager. The handles above the border are the system's own references.
class MacHotKeys : public HotKeys {
  public:
    MacHotKeys();
    ~MacHotKeys() override;

    EventHandlerInstallation installEventHandler(HotKeyEventHandler callback, EventTypeSpec type,
                                                 void *userData) override;
    qint32 removeEventHandler(EventHandlerRef handler) override;
    HotKeyRegistration registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id,
                                      quint32 options) override;
    qint32 unregisterHotKey(HotKeyRef hotKey) override;

  private:
    struct Listener;

    /// What the system calls back with, for as long as it may.
    std::map<EventHandlerRef, std::unique_ptr<Listener>> listeners_;
};

} // namespace quillmender
