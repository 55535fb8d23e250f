#include "platform/linux/portal/PortalHotKeys.h"

#include "platform/linux/portal/PortalHotKey.h"

namespace quillmender::portal {

QCoro::Task<HotKeyOutcome> PortalHotKeys::hold(QKeyCombination keys,
                                               std::function<void()> handler) {
    auto hotKey = std::make_unique<PortalHotKey>(portal_, keys, std::move(handler));
    PortalAnswer answer = co_await hotKey->establish();
    if (!answer.isGranted())
        hotKey.reset();
    else if (!hotKey->keys())
        answer.reason = QStringLiteral("the desktop has given no keys to the shortcut");
    co_return HotKeyOutcome{std::move(hotKey), std::move(answer.reason)};
}

} // namespace quillmender::portal
