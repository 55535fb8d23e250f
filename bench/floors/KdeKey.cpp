#include "KdeKey.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QKeyCombination>

#include <utility>

namespace {

/// One shortcut: the keys that are pressed one after the other, the rest of four of them 0.
struct Shortcut {
    QList<int> keys;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Shortcut &shortcut) {
    argument.beginStructure();
    argument << shortcut.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Shortcut &shortcut) {
    argument.beginStructure();
    argument >> shortcut.keys;
    argument.endStructure();
    return argument;
}

void call(const QString &method, const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.kglobalaccel"), QStringLiteral("/kglobalaccel"),
        QStringLiteral("org.kde.KGlobalAccel"), method);
    message.setArguments(arguments);
    QDBusConnection::sessionBus().call(message);
}

} // namespace

KdeKey::KdeKey(std::function<void()> pressed) : pressed_(std::move(pressed)) {
    constexpr quint32 presentWithoutLoading = 2 | 4;
    const QString name = QStringLiteral("floor");
    const QStringList action{name, name, name, name};
    const QKeyCombination keys(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Return);
    qDBusRegisterMetaType<Shortcut>();
    qDBusRegisterMetaType<QList<Shortcut>>();
    QDBusConnection::sessionBus().connect(
        QStringLiteral("org.kde.kglobalaccel"), QStringLiteral("/component/") + name,
        QStringLiteral("org.kde.kglobalaccel.Component"), QStringLiteral("globalShortcutPressed"),
        this, SLOT(handlePress(QString, QString)));
    call(QStringLiteral("doRegister"), {action});
    call(QStringLiteral("setShortcutKeys"),
         {action, QVariant::fromValue(QList<Shortcut>{{{keys.toCombined(), 0, 0, 0}}}),
          presentWithoutLoading});
}

void KdeKey::handlePress(const QString &, const QString &) {
    pressed_();
}
