#include "platform/linux/wayland/kwin/GlobalAccel.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>

namespace quillmender::kwin {

const QString GlobalAccel::service = QStringLiteral("org.kde.kglobalaccel");
const QString GlobalAccel::path = QStringLiteral("/kglobalaccel");
const QString GlobalAccel::interface = QStringLiteral("org.kde.KGlobalAccel");

namespace {

constexpr int limitMilliseconds = 5000;
constexpr int farewellMilliseconds = 250;

QDBusMessage callOf(const QString &method, const QVariantList &arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(GlobalAccel::service, GlobalAccel::path,
                                                       GlobalAccel::interface, method);
    call.setArguments(arguments);
    // On another desktop it would begin to compete with that desktop for its keys.
    call.setAutoStartService(false);
    return call;
}

QCoro::Task<QDBusMessage> answerTo(QDBusConnection bus, QString method, QVariantList arguments) {
    QDBusPendingCall pending = bus.asyncCall(callOf(method, arguments), limitMilliseconds);
    const QDBusMessage reply = co_await pending;
    co_return reply;
}

QCoro::Task<std::optional<ShortcutKeys>> keysFrom(QDBusConnection bus, QString method,
                                                  QVariantList arguments) {
    const QDBusMessage reply = co_await answerTo(bus, method, arguments);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        co_return std::nullopt;
    co_return shortcutKeys(reply.arguments().constFirst());
}

} // namespace

QCoro::Task<bool> GlobalAccel::doRegister(QStringList action) const {
    const QVariantList arguments{action};
    const QDBusMessage reply = co_await answerTo(bus_, QStringLiteral("doRegister"), arguments);
    co_return reply.type() == QDBusMessage::ReplyMessage;
}

QCoro::Task<std::optional<ShortcutKeys>> GlobalAccel::keys(QStringList action) const {
    return keysFrom(bus_, QStringLiteral("shortcutKeys"), QVariantList{action});
}

QCoro::Task<std::optional<ShortcutKeys>> GlobalAccel::defaultKeys(QStringList action) const {
    return keysFrom(bus_, QStringLiteral("defaultShortcutKeys"), QVariantList{action});
}

QCoro::Task<std::optional<ShortcutKeys>> GlobalAccel::setKeys(QStringList action, ShortcutKeys keys,
                                                              quint32 flags) const {
    return keysFrom(bus_, QStringLiteral("setShortcutKeys"),
                    QVariantList{action, QVariant::fromValue(keys), flags});
}

QCoro::Task<QString> GlobalAccel::ownerOf(ShortcutKeys keys) const {
    constexpr qsizetype componentName = 2;
    constexpr qsizetype actionName = 3;
    if (keys.isEmpty())
        co_return QString();
    const QVariantList arguments{QVariant::fromValue(keys.constFirst())};
    const QDBusMessage reply = co_await answerTo(bus_, QStringLiteral("actionList"), arguments);
    if (reply.signature() != QStringLiteral("as"))
        co_return QString();
    const QStringList owner = reply.arguments().constFirst().toStringList();
    if (owner.size() <= actionName)
        co_return QString();
    co_return QStringLiteral("%1 (%2)").arg(owner[componentName], owner[actionName]);
}

void GlobalAccel::setInactive(const QStringList &action) const {
    bus_.send(callOf(QStringLiteral("setInactive"), {action}));
}

void GlobalAccel::setInactiveNow(const QStringList &action) const {
    bus_.call(callOf(QStringLiteral("setInactive"), {action}), QDBus::Block, farewellMilliseconds);
}

} // namespace quillmender::kwin
