#include "platform/linux/wayland/sway/SwayHotKeys.h"

#include "platform/SignalWait.h"
#include "platform/linux/wayland/sway/SwayBindings.h"
#include "platform/linux/wayland/sway/SwayHotKey.h"

namespace quillmender::sway {

using namespace std::chrono_literals;

QCoro::Task<HotKeyOutcome> SwayHotKeys::hold(QKeyCombination keys, std::function<void()> handler) {
    const QString name = spelled(keys);
    if (name.isEmpty())
        co_return HotKeyOutcome{nullptr, QStringLiteral("its key types no ASCII character")};
    auto hotKey = std::make_unique<SwayHotKey>(ipc_, keys, name, std::move(handler));
    // One that is stopped lets the program go on; the hot key comes when it does.
    if (!hotKey->isSettled())
        co_await SignalWait(hotKey.get(), &SwayHotKey::settled, 3s);
    const QString reason = hotKey->reason();
    co_return HotKeyOutcome{std::move(hotKey), reason};
}

} // namespace quillmender::sway
