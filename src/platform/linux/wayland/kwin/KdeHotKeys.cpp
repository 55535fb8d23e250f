#include "platform/linux/wayland/kwin/KdeHotKeys.h"

#include "platform/ApplicationId.h"
#include "platform/linux/wayland/kwin/KdeHotKey.h"

#include <QDBusMessage>

namespace quillmender::kwin {

namespace {

constexpr int limitMilliseconds = 1000;

QStringList actionId() {
    return {QLatin1String(applicationId), QStringLiteral("transform"),
            QStringLiteral("Quillmender"), QStringLiteral("Transform Selected Text")};
}

} // namespace

std::unique_ptr<KdeHotKeys> KdeHotKeys::create(QDBusConnection bus) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    call.setArguments({GlobalAccel::service});
    const QDBusMessage reply = bus.call(call, QDBus::Block, limitMilliseconds);
    const bool isThere =
        reply.signature() == QStringLiteral("b") && reply.arguments().constFirst().toBool();
    return isThere ? std::make_unique<KdeHotKeys>(std::move(bus)) : nullptr;
}

QCoro::Task<HotKeyOutcome> KdeHotKeys::hold(QKeyCombination keys, std::function<void()> handler) {
    auto hotKey = std::make_unique<KdeHotKey>(bus_, actionId(), keys, std::move(handler));
    KdeHotKey::Registration registration = co_await hotKey->registerKeys();
    if (!registration.isAnswered)
        hotKey.reset();
    co_return HotKeyOutcome{std::move(hotKey), std::move(registration.reason)};
}

} // namespace quillmender::kwin
