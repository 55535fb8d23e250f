#include "app/HotKeyManager.h"

#include "platform/KeyEvents.h"

#include <utility>

namespace quillmender {

namespace {

constexpr quint32 controlKey = 0x1000;
constexpr quint32 optionKey = 0x0800;
constexpr EventTypeSpec hotKeyPressed{0x6B657962, 5};
constexpr quint32 noOptions = 0;

} // namespace

HotKeyManager::HotKeyManager(HotKeys &hotKeys, std::function<void()> handler)
    : hotKeys_(hotKeys),
      handler_(std::move(handler)) {}

HotKeyManager::~HotKeyManager() {
    release();
}

void HotKeyManager::registerHotKey() {
    release();
    const auto installation =
        hotKeys_.installEventHandler(&HotKeyManager::hotKeyEventHandler, hotKeyPressed, this);
    if (installation.status != noErr)
        return;
    eventHandlerRef_ = installation.handler;
    hotKeyRef_ = hotKeys_
                     .registerHotKey(keycode::space, controlKey | optionKey,
                                     {fourCharCode(u"QLMD"), 1}, noOptions)
                     .hotKey;
}

qint32 HotKeyManager::hotKeyEventHandler(void *, void *, void *userData) {
    if (!userData)
        return eventNotHandledErr;
    auto *manager = static_cast<HotKeyManager *>(userData);
    QMetaObject::invokeMethod(manager, [manager] { manager->invoke(); }, Qt::QueuedConnection);
    return noErr;
}

quint32 HotKeyManager::fourCharCode(QStringView text) {
    quint32 code = 0;
    for (const char byte : text.toUtf8())
        code = (code << 8) | static_cast<quint8>(byte);
    return code;
}

void HotKeyManager::release() {
    if (hotKeyRef_)
        hotKeys_.unregisterHotKey(std::exchange(hotKeyRef_, 0));
    if (eventHandlerRef_)
        hotKeys_.removeEventHandler(std::exchange(eventHandlerRef_, 0));
}

void HotKeyManager::invoke() {
    handler_();
}

} // namespace quillmender
