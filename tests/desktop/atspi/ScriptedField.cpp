#include "desktop/atspi/ScriptedField.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QUuid>

#include <algorithm>

namespace quillmender::atspi {

ScriptedField::ScriptedField(const QString &busAddress, const QString &initialText)
    : text(initialText),
      insert([this](qsizetype position, const QString &added) { text.insert(position, added); }),
      connection_(QDBusConnection::connectToBus(busAddress, QUuid::createUuid().toString())) {
    connection_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    stalled_.setSingleShot(true);
    connect(&stalled_, &QTimer::timeout, this, &ScriptedField::attendToWaiting);
}

ScriptedField::~ScriptedField() {
    QDBusConnection::disconnectFromBus(connection_.name());
}

bool ScriptedField::handleMessage(const QDBusMessage &message, const QDBusConnection &) {
    if (nonsense.isValid()) {
        connection_.send(message.createReply(nonsense));
        return true;
    }
    if (isMute)
        return true;
    if (!flights.isEmpty()) {
        gather(message);
        return true;
    }
    const bool isHeldUp = stall.count() > 0 && isChange(message);
    if (isHeldUp && !stalled_.isActive())
        stalled_.start(stall);
    if (stalled_.isActive())
        waiting_.append(message);
    else
        attend(message);
    return true;
}

void ScriptedField::gather(const QDBusMessage &message) {
    flight_.append(message);
    if (flight_.size() < flights.constFirst())
        return;
    flights.removeFirst();
    QList<QDBusMessage> whole;
    whole.swap(flight_);
    if (answersBackwards)
        std::reverse(whole.begin(), whole.end());
    for (const QDBusMessage &question : whole) {
        attend(question);
        if (answersTwice)
            attend(question);
    }
}

bool ScriptedField::isChange(const QDBusMessage &message) const {
    return message.interface() == QStringLiteral("org.a11y.atspi.EditableText");
}

void ScriptedField::attend(const QDBusMessage &message) {
    if (message.member() == QStringLiteral("GetSelection")) {
        connection_.send(message.createReply(QVariantList{selectionStart, selectionEnd}));
        return;
    }
    const QVariant answer = answerTo(message);
    if (answer.isValid())
        connection_.send(message.createReply(answer));
    const auto tell = [&](const char *member, const std::function<void()> &listener) {
        if (listener && message.member() == QLatin1String(member))
            listener();
    };
    tell("GetText", whenRead);
    tell("Get", whenCounted);
    tell("SetSelection", whenSelected);
}

void ScriptedField::attendToWaiting() {
    while (!waiting_.isEmpty()) {
        attend(waiting_.takeFirst());
        if (!waiting_.isEmpty() && isChange(waiting_.constFirst())) {
            stalled_.start(stall);
            return;
        }
    }
}

QVariant ScriptedField::answerTo(const QDBusMessage &message) {
    const QVariantList arguments = message.arguments();
    const int first = arguments.value(0).toInt();
    if (message.member() == QStringLiteral("Get"))
        return QVariant::fromValue(QDBusVariant(int(text.size())));
    if (message.member() == QStringLiteral("GetNSelections"))
        return selectionEnd > selectionStart ? 1 : 0;
    if (message.member() == QStringLiteral("SetSelection")) {
        if (obeysSelection) {
            selectionStart = arguments.value(1).toInt();
            selectionEnd = arguments.value(2).toInt();
        }
        return obeysSelection;
    }
    if (message.member() == QStringLiteral("GetText")) {
        const int end = arguments.value(1).toInt();
        if (end < 0 && !knowsItsEnd)
            return QString();
        return text.mid(first, end < 0 ? -1 : end - first);
    }
    if (message.member() == QStringLiteral("DeleteText")) {
        calls.append(QStringLiteral("DeleteText"));
        if (refusesDeletion)
            return false;
        text.remove(first, arguments.value(1).toInt() - first);
        return answersDeletion ? QVariant(true) : QVariant();
    }
    if (message.member() == QStringLiteral("SetTextContents")) {
        calls.append(QStringLiteral("SetTextContents"));
        if (setsContents)
            text = arguments.value(0).toString();
        return setsContents;
    }
    if (message.member() == QStringLiteral("InsertText")) {
        calls.append(QStringLiteral("InsertText"));
        if (!insert)
            return false;
        insert(first, arguments.value(1).toString());
        return true;
    }
    return false;
}

} // namespace quillmender::atspi
