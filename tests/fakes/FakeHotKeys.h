#pragma once

#include "fakes/CallLog.h"
#include "platform/HotKeys.h"

namespace quillmender::fakes {

class FakeHotKeys : public HotKeys {
  public:
    explicit FakeHotKeys(CallLog log) : log_(std::move(log)) {}

    EventHandlerInstallation installEventHandler(HotKeyEventHandler callback, EventTypeSpec type,
                                                 void *userData) override {
        log_->append(QStringLiteral("installEventHandler 0x%1 %2")
                         .arg(type.eventClass, 0, 16)
                         .arg(type.eventKind));
        if (installStatus != noErr)
            return {installStatus, 0};
        callback_ = callback;
        userData_ = userData;
        return {noErr, ++lastHandle_};
    }
    qint32 removeEventHandler(EventHandlerRef handler) override {
        log_->append(QStringLiteral("removeEventHandler %1").arg(handler));
        callback_ = nullptr;
        return noErr;
    }
    HotKeyRegistration registerHotKey(quint32 keyCode, quint32 modifiers, HotKeyId id,
                                      quint32 options) override {
        log_->append(QStringLiteral("registerHotKey %1 0x%2 0x%3 %4 options %5")
                         .arg(keyCode)
                         .arg(modifiers, 0, 16)
                         .arg(id.signature, 0, 16)
                         .arg(id.id)
                         .arg(options));
        if (registerStatus != noErr)
            return {registerStatus, 0};
        return {noErr, ++lastHandle_};
    }
    qint32 unregisterHotKey(HotKeyRef hotKey) override {
        log_->append(QStringLiteral("unregisterHotKey %1").arg(hotKey));
        return noErr;
    }

    qint32 press() { return callback_ ? callback_(nullptr, nullptr, userData_) : -1; }
    bool isInstalled() const { return callback_ != nullptr; }

    qint32 installStatus = noErr;
    qint32 registerStatus = noErr;

  private:
    CallLog log_;
    HotKeyEventHandler callback_ = nullptr;
    void *userData_ = nullptr;
    quint64 lastHandle_ = 0;
};

} // namespace quillmender::fakes
