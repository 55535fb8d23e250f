#pragma once

#include <QtGlobal>

namespace quillmender {

/// A keyboard event's class and kind, as an event handler subscribes to them.
struct EventTypeSpec {
    quint32 eventClass = 0;
    quint32 eventKind = 0;

    friend bool operator==(const EventTypeSpec &, const EventTypeSpec &) = default;
};

struct HotKeyId {
    quint32 signature = 0;
    quint32 id = 0;

    friend bool operator==(const HotKeyId &, const HotKeyId &) = default;
};

/// Called for each press on the thread that dispatches events: the next handler in the chain, the
/// event, and the pointer given at installation. Answers a status.
using HotKeyEventHandler = qint32 (*)(void *nextHandler, void *event, void *userData);

/// 0 stands for "none" in both.
using EventHandlerRef = quint64;
using HotKeyRef = quint64;

struct EventHandlerInstallation {
    qint32 status = 0;
    EventHandlerRef handler = 0;
};

struct HotKeyRegistration {
    qint32 status = 0;
    HotKeyRef hotKey = 0;
};

inline constexpr qint32 noErr = 0;
inline constexpr qint32 eventNotHandledErr = -9874;

/// System-wide keyboard shortcuts, after the model of the Carbon event manager; the application's
/// own event target is implied. One run of the handler for each press by the user, none for the
/// repeats of a key that is held down.
class HotKeys {
  public:
    HotKeys() = default;
    HotKeys(const HotKeys &) = delete;
    HotKeys &operator=(const HotKeys &) = delete;
    virtual ~HotKeys() = default;

    virtual EventHandlerInstallation installEventHandler(HotKeyEventHandler callback,
                                                         EventTypeSpec type, void *userData) = 0;
    virtual qint32 removeEventHandler(EventHandlerRef handler) = 0;

    /// `keyCode` is a virtual key code, `modifiers` the Carbon encoding: control 0x1000, option
    /// 0x800 (Alt on Linux), shift 0x200, command 0x100.
    virtual HotKeyRegistration registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id,
                                              quint32 options) = 0;
    virtual qint32 unregisterHotKey(HotKeyRef hotKey) = 0;
};

} // namespace quillmender
