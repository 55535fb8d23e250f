#include "platform/macos/MacHotKeys.h"

#include "platform/macos/MacHotKey.h"

#include <QLoggingCategory>

namespace quillmender {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.hotkey", QtWarningMsg)
} // namespace

QCoro::Task<HotKeyOutcome> MacHotKeys::hold(QKeyCombination keys, std::function<void()> handler) {
    if (keys.key() != Qt::Key_Space)
        co_return HotKeyOutcome{nullptr, QStringLiteral("no key code is known for its key")};
    auto hotKey = std::make_unique<MacHotKey>(keys, std::move(handler));
    if (!hotKey->isInstalled())
        co_return HotKeyOutcome{nullptr,
                                QStringLiteral("the system installs no handler for hot keys")};
    if (!hotKey->keys())
        qCWarning(log, "the hot key could not be registered: another program may have it");
    co_return HotKeyOutcome{std::move(hotKey), {}};
}

} // namespace quillmender
