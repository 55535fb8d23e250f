#include "desktop/wayland/kwin/FakeGlobalAccel.h"

#include "platform/linux/wayland/kwin/GlobalAccel.h"
#include "support/LeaveBus.h"

#include <QUuid>

namespace quillmender {

using kwin::GlobalAccel;
using kwin::ShortcutKeys;

FakeGlobalAccel::FakeGlobalAccel(ShortcutKeys keys, ShortcutKeys usual)
    : connectionName_(QUuid::createUuid().toString()),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName_)),
      keys_(std::move(keys)),
      usual_(std::move(usual)) {
    kwin::registerShortcutKeys();
    bus_.registerVirtualObject(GlobalAccel::path, this);
    bus_.registerService(GlobalAccel::service);
}

FakeGlobalAccel::~FakeGlobalAccel() {
    test::leaveBus(this, GlobalAccel::path, bus_);
}

bool FakeGlobalAccel::handleMessage(const QDBusMessage &message, const QDBusConnection &) {
    QString name = message.member();
    if (name == QStringLiteral("setShortcutKeys"))
        name += QStringLiteral(" %1").arg(message.arguments()[2].toUInt());
    asked_.append(name);
    switch (manners_.value(message.member())) {
    case Manner::usual:
        bus_.send(message.createReply(answer(message)));
        break;
    case Manner::garbled:
        bus_.send(message.createReply(QStringLiteral("nonsense")));
        break;
    case Manner::refused:
        bus_.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
        break;
    case Manner::mute:
        break;
    }
    return true;
}

QVariantList FakeGlobalAccel::answer(const QDBusMessage &call) {
    const QString method = call.member();
    const QVariantList arguments = call.arguments();
    if (method == QStringLiteral("doRegister")) {
        action_ = arguments[0].toStringList();
        return {};
    }
    if (method == QStringLiteral("shortcutKeys"))
        return {QVariant::fromValue(keys_)};
    if (method == QStringLiteral("defaultShortcutKeys"))
        return {QVariant::fromValue(usual_)};
    if (method == QStringLiteral("actionList"))
        return {QStringList{QStringLiteral("stranger"), QStringLiteral("act"),
                            QStringLiteral("Stranger"), QStringLiteral("Act")}};
    if (method != QStringLiteral("setShortcutKeys"))
        return {};
    const ShortcutKeys wanted = kwin::shortcutKeys(arguments[1]).value_or(ShortcutKeys());
    const quint32 flags = arguments[2].toUInt();
    if ((flags & GlobalAccel::asDefault) != 0)
        usual_ = wanted;
    else if ((flags & GlobalAccel::regardless) != 0)
        keys_ = isTaken_ ? ShortcutKeys() : wanted;
    return {QVariant::fromValue((flags & GlobalAccel::asDefault) != 0 ? usual_ : keys_)};
}

void FakeGlobalAccel::send(const QString &path, const QString &interface, const QString &signal,
                           const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
    message.setArguments(arguments);
    bus_.send(message);
}

void FakeGlobalAccel::tellPressed(bool isPressed) {
    send(QStringLiteral("/component/ours"), QStringLiteral("org.kde.kglobalaccel.Component"),
         isPressed ? QStringLiteral("globalShortcutPressed")
                   : QStringLiteral("globalShortcutReleased"),
         {action_.value(0), action_.value(1), qint64{1}});
}

void FakeGlobalAccel::tellKeys(const QString &component, const ShortcutKeys &keys) {
    send(GlobalAccel::path, GlobalAccel::interface, QStringLiteral("yourShortcutsChanged"),
         {QStringList{component, action_.value(1)}, QVariant::fromValue(keys)});
}

void FakeGlobalAccel::tellNonsense() {
    send(GlobalAccel::path, GlobalAccel::interface, QStringLiteral("yourShortcutsChanged"),
         {QStringLiteral("all of them")});
    send(GlobalAccel::path, GlobalAccel::interface, QStringLiteral("yourShortcutsChanged"),
         {QStringList(), QVariant::fromValue(ShortcutKeys())});
}

} // namespace quillmender
