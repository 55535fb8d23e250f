#include "desktop/harness/gnome/RemoteControl.h"

#include "desktop/harness/HarnessError.h"

#include <QDBusMessage>
#include <QDBusObjectPath>

namespace quillmender::harness {

namespace {

// Only failures reach it; a busy machine comes near.
constexpr int callDeadlineMs = 20000;

} // namespace

QString RemoteControl::service() {
    return QStringLiteral("org.gnome.Mutter.RemoteDesktop");
}

QString RemoteControl::interface() {
    return QStringLiteral("org.gnome.Mutter.RemoteDesktop.Session");
}

RemoteControl::RemoteControl(QDBusConnection bus) : bus_(std::move(bus)) {
    const QDBusMessage answer = bus_.call(
        QDBusMessage::createMethodCall(service(), QStringLiteral("/org/gnome/Mutter/RemoteDesktop"),
                                       service(), QStringLiteral("CreateSession")),
        QDBus::Block, callDeadlineMs);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw HarnessError(QStringLiteral("no remote control: %1").arg(answer.errorMessage()));
    path_ = answer.arguments().value(0).value<QDBusObjectPath>().path();
    call(QStringLiteral("Start"));
}

RemoteControl::~RemoteControl() {
    bus_.call(QDBusMessage::createMethodCall(service(), path_, interface(), QStringLiteral("Stop")),
              QDBus::NoBlock);
}

QVariantList RemoteControl::call(const QString &method, const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(service(), path_, interface(), method);
    message.setArguments(arguments);
    const QDBusMessage answer = bus_.call(message, QDBus::Block, callDeadlineMs);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw HarnessError(QStringLiteral("%1: %2").arg(method, answer.errorMessage()));
    return answer.arguments();
}

std::optional<QVariantList> RemoteControl::tryCall(const QString &method,
                                                   const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(service(), path_, interface(), method);
    message.setArguments(arguments);
    const QDBusMessage answer = bus_.call(message, QDBus::Block, callDeadlineMs);
    if (answer.type() != QDBusMessage::ReplyMessage)
        return std::nullopt;
    return answer.arguments();
}

} // namespace quillmender::harness
