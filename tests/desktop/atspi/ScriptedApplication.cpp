#include "desktop/atspi/ScriptedApplication.h"

#include "platform/linux/atspi/AtspiTypes.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QUuid>

namespace quillmender::atspi {

namespace {

const QString framePath = QStringLiteral("/frame");

QVariant states(const QList<State> &list) {
    quint64 bits = 0;
    for (const State state : list)
        bits |= quint64(1) << int(state);
    return QVariant::fromValue(QList<uint>{uint(bits), uint(bits >> 32U)});
}

} // namespace

ScriptedApplication::ScriptedApplication(const QString &busAddress, const QString &initialText)
    : ScriptedField(busAddress, initialText),
      busAddress_(busAddress) {
    registerAtspiTypes();
    qDBusRegisterMetaType<QList<ObjectRef>>();
    qDBusRegisterMetaType<QList<uint>>();
}

void ScriptedApplication::join() {
    // Another connection than the application's, which has to answer meanwhile.
    const QString name = QUuid::createUuid().toString();
    QDBusConnection connection = QDBusConnection::connectToBus(busAddress_, name);
    QDBusMessage greeting = QDBusMessage::createMethodCall(
        QLatin1String(protocol::registry), QLatin1String(protocol::rootPath),
        QStringLiteral("org.a11y.atspi.Socket"), QStringLiteral("Embed"));
    greeting << QVariant::fromValue(ObjectRef{service(), QLatin1String(protocol::rootPath)});
    connection.call(greeting);
    QDBusConnection::disconnectFromBus(name);
}

bool ScriptedApplication::handleMessage(const QDBusMessage &message,
                                        const QDBusConnection &connection) {
    const QVariant trait = traitOf(message);
    if (!trait.isValid())
        return ScriptedField::handleMessage(message, connection);
    connection.send(message.createReply(trait));
    return true;
}

QVariant ScriptedApplication::traitOf(const QDBusMessage &message) const {
    const bool isField = message.path() == path();
    const bool isFrame = message.path() == framePath;
    if (message.member() == QStringLiteral("GetChildren")) {
        QList<ObjectRef> children;
        if (!isField)
            children.append({service(), isFrame ? path() : framePath});
        return QVariant::fromValue(children);
    }
    if (message.member() == QStringLiteral("GetMatches"))
        return QVariant::fromValue(QList<ObjectRef>{{service(), path()}});
    if (message.member() == QStringLiteral("GetRole"))
        return isField ? fieldRole : roles::frame;
    if (message.member() == QStringLiteral("GetInterfaces")) {
        return isField ? QStringList{QLatin1String(protocol::text),
                                     QLatin1String(protocol::editableText)}
                       : QStringList{QLatin1String(protocol::accessible)};
    }
    if (message.member() == QStringLiteral("GetState")) {
        if (isField)
            return states({State::focused, State::editable, State::visible, State::showing});
        QList<State> ofFrame{State::visible, State::showing};
        if (isActive)
            ofFrame.append(State::active);
        return states(ofFrame);
    }
    return {};
}

} // namespace quillmender::atspi
