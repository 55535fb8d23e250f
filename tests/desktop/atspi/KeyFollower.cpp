#include "desktop/atspi/KeyFollower.h"

#include "desktop/harness/HarnessError.h"
#include "platform/linux/atspi/AtspiTypes.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include <utility>

namespace quillmender::atspi {

namespace {

const QString path = QStringLiteral("/test/follower");

/// Which keys, as the protocol writes it; an empty list is all.
struct KeyDefinition {
    int code = 0;
    int symbol = 0;
    QString name;
    int unused = 0;
};

/// How the registry asks.
struct ListenerMode {
    bool isSynchronous = true;
    bool isPreemptive = true;
    bool isGlobal = false;
};

QDBusArgument &operator<<(QDBusArgument &out, const KeyDefinition &key) {
    out.beginStructure();
    out << key.code << key.symbol << key.name << key.unused;
    out.endStructure();
    return out;
}

QDBusArgument &operator<<(QDBusArgument &out, const ListenerMode &mode) {
    out.beginStructure();
    out << mode.isSynchronous << mode.isPreemptive << mode.isGlobal;
    out.endStructure();
    return out;
}

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the signature that the bus library wants
const QDBusArgument &operator>>(const QDBusArgument &in, KeyDefinition &key) {
    in.beginStructure();
    in >> key.code >> key.symbol >> key.name >> key.unused;
    in.endStructure();
    return in;
}

const QDBusArgument &operator>>(const QDBusArgument &in, ListenerMode &mode) {
    in.beginStructure();
    in >> mode.isSynchronous >> mode.isPreemptive >> mode.isGlobal;
    in.endStructure();
    return in;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

} // namespace

KeyFollower::KeyFollower(QDBusConnection bus) : bus_(std::move(bus)) {
    qDBusRegisterMetaType<KeyDefinition>();
    qDBusRegisterMetaType<QList<KeyDefinition>>();
    qDBusRegisterMetaType<ListenerMode>();
    bus_.registerVirtualObject(path, this);
    QDBusMessage order = QDBusMessage::createMethodCall(
        QLatin1String(protocol::registry), QLatin1String(protocol::deviceEventControllerPath),
        QLatin1String(protocol::deviceEventController),
        QStringLiteral("RegisterKeystrokeListener"));
    constexpr uint noModifiers = 0;
    constexpr uint pressesAndReleases = 3;
    order << QVariant::fromValue(QDBusObjectPath(path))
          << QVariant::fromValue(QList<KeyDefinition>()) << noModifiers << pressesAndReleases
          << QVariant::fromValue(ListenerMode());
    const QDBusMessage reply = bus_.call(order);
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw harness::HarnessError(QStringLiteral("no keys are shown: ") + reply.errorMessage());
}

KeyFollower::~KeyFollower() {
    letGo();
    bus_.unregisterObject(path);
}

void KeyFollower::letGo() {
    isLettingGo_ = true;
    for (const QDBusMessage &question : std::exchange(questions_, {}))
        answer(question);
}

QString KeyFollower::introspect(const QString &) const {
    return {};
}

bool KeyFollower::handleMessage(const QDBusMessage &message, const QDBusConnection &) {
    if (message.member() != QStringLiteral("NotifyEvent"))
        return false;
    if (isLettingGo_)
        answer(message);
    else
        questions_.append(message);
    return true;
}

void KeyFollower::answer(const QDBusMessage &question) {
    constexpr bool isConsumed = false;
    bus_.send(question.createReply(isConsumed));
}

} // namespace quillmender::atspi
