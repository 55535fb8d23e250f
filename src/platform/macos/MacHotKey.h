#pragma once

#include "platform/HeldHotKey.h"

#include <QStringView>

#include <Carbon/Carbon.h>
#include <memory>

namespace quillmender {

/// One registration with the Carbon event manager, and the handler that hears of its presses. The
/// system does not say when keys that another program has become free.
class MacHotKey : public HeldHotKey {
    Q_OBJECT

  public:
    /// Installs the event handler, and only then registers the modifiers with the Space key.
    MacHotKey(QKeyCombination keys, std::function<void()> handler);
    ~MacHotKey() override;

    bool isInstalled() const { return eventHandlerRef_ != nullptr; }
    std::optional<QKeyCombination> keys() const override;

    /// The callback for the event service, on whichever thread that is. `userData` is what was
    /// given at the installation.
    static OSStatus hotKeyEventHandler(EventHandlerCallRef nextHandler, EventRef event,
                                       void *userData);

    /// Folds UTF-8 bytes into 32 bits, the last four remaining.
    static quint32 fourCharCode(QStringView text);

  private:
    struct Listener;

    const QKeyCombination asked_;
    std::unique_ptr<Listener> listener_;
    EventHotKeyRef hotKeyRef_ = nullptr;
    EventHandlerRef eventHandlerRef_ = nullptr;
};

} // namespace quillmender
