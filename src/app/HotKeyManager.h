#pragma once

#include "platform/HotKeys.h"

#include <QObject>
#include <QStringView>

#include <functional>

namespace quillmender {

/// The one global shortcut, Control + Option + Space. Every failure is silent: the status menu
/// does the same thing.
class HotKeyManager : public QObject {
    Q_OBJECT

  public:
    /// `handler` runs on the main thread, in a turn of the event loop of its own, once a press.
    HotKeyManager(HotKeys &hotKeys, std::function<void()> handler);
    ~HotKeyManager() override;

    /// Replaces an earlier registration.
    void registerHotKey();

    /// The callback for the event service; `userData` is the manager.
    static qint32 hotKeyEventHandler(void *nextHandler, void *event, void *userData);

    /// Folds UTF-8 bytes into 32 bits, the last four remaining.
    static quint32 fourCharCode(QStringView text);

  private:
    void release();
    void invoke();

    HotKeys &hotKeys_;
    HotKeyRef hotKeyRef_ = 0;
    EventHandlerRef eventHandlerRef_ = 0;
    std::function<void()> handler_;
};

} // namespace quillmender
