#include "platform/HeldHotKey.h"

#include <utility>

namespace quillmender {

HeldHotKey::HeldHotKey(std::function<void()> handler) : handler_(std::move(handler)) {}

void HeldHotKey::press() {
    QMetaObject::invokeMethod(this, [this] { invoke(); }, Qt::QueuedConnection);
}

void HeldHotKey::invoke() {
    // The handler may end this hot key.
    const auto handler = handler_;
    handler();
}

} // namespace quillmender
