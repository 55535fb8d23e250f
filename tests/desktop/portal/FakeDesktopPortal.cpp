#include "desktop/portal/FakeDesktopPortal.h"

#include "support/LeaveBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QUuid>

#include <algorithm>

namespace quillmender {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString desktop = QStringLiteral("/org/freedesktop/portal/desktop");
const QString prefix = QStringLiteral("org.freedesktop.portal.");

QString handle(const QDBusMessage &call, const QString &kind, const QString &token) {
    QString sender = call.service().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    return QStringLiteral("%1/%2/%3/%4").arg(desktop, kind, sender, token);
}

} // namespace

FakeDesktopPortal::FakeDesktopPortal(const QString &address)
    : connectionName_(QUuid::createUuid().toString()),
      bus_(address.isEmpty()
               ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName_)
               : QDBusConnection::connectToBus(address, connectionName_)) {
    bus_.registerVirtualObject(desktop, this, QDBusConnection::SubPath);
    bus_.registerService(service);
}

FakeDesktopPortal::~FakeDesktopPortal() {
    test::leaveBus(this, desktop, bus_);
}

bool FakeDesktopPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &) {
    const QVariantList arguments = message.arguments();
    if (message.interface() == QStringLiteral("org.freedesktop.DBus.Properties")) {
        const QString interface = arguments[0].toString().mid(prefix.size());
        const Answer version = answers_.value(interface + QStringLiteral(".version"));
        if (version.manner == Manner::refused)
            bus_.send(message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("no")));
        else
            bus_.send(message.createReply(
                QVariant::fromValue(QDBusVariant(std::max(version.code, quint32{1})))));
        return true;
    }
    const QString method =
        message.interface().section(QLatin1Char('.'), -1) + QLatin1Char('.') + message.member();
    if (message.member() == QStringLiteral("NotifyKeyboardKeycode"))
        asked_.append(
            QStringLiteral("key %1 %2").arg(arguments[2].toInt()).arg(arguments[3].toUInt()));
    else
        asked_.append(method);
    answer(message, method);
    return true;
}

void FakeDesktopPortal::answer(const QDBusMessage &call, const QString &method) {
    Answer answer = answers_.value(method);
    if (answer.manner == Manner::mute)
        return;
    if (answer.manner == Manner::refused) {
        bus_.send(call.createErrorReply(QDBusError::AccessDenied, QStringLiteral("not now")));
        return;
    }
    const bool answersLater = call.signature().endsWith(QStringLiteral("a{sv}")) &&
                              call.member() != QStringLiteral("Register");
    if (!answersLater) {
        bus_.send(call.createReply());
        return;
    }
    const auto options = qdbus_cast<QVariantMap>(call.arguments().constLast());
    options_.insert(method, options);
    if (call.member() == QStringLiteral("CreateSession")) {
        session_ = handle(call, QStringLiteral("session"),
                          options.value(QStringLiteral("session_handle_token")).toString());
        answer.results.insert(QStringLiteral("session_handle"), session_);
    }
    QString path = handle(call, QStringLiteral("request"),
                          options.value(QStringLiteral("handle_token")).toString());
    if (answer.manner == Manner::elsewhere)
        path += QStringLiteral("_elsewhere");
    const bool isEarly = answer.manner == Manner::early || answer.manner == Manner::elsewhere;
    if (isEarly)
        respond(path, answer);
    bus_.send(call.createReply(QVariant::fromValue(QDBusObjectPath(path))));
    if (!isEarly && answer.manner != Manner::silent)
        respond(path, answer);
    if (answer.manner == Manner::twice)
        respond(path, {2, {}});
}

void FakeDesktopPortal::respond(const QString &path, const Answer &answer) {
    const QVariantList response =
        answer.manner == Manner::garbled
            ? QVariantList{QStringLiteral("yes"), answer.code}
            : QVariantList{answer.code, QVariant::fromValue(answer.results)};
    send(path, QStringLiteral("Request"), QStringLiteral("Response"), response);
}

void FakeDesktopPortal::send(const QString &path, const QString &interface, const QString &signal,
                             const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createSignal(path, prefix + interface, signal);
    message.setArguments(arguments);
    bus_.send(message);
}

} // namespace quillmender
