#pragma once

#include <QDBusArgument>
#include <QKeyCombination>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace quillmender::portal {

/// One shortcut as the portal's GlobalShortcuts tell of it; on the bus `(sa{sv})`.
struct PortalShortcut {
    QString id;
    QVariantMap properties;
};

using PortalShortcuts = QList<PortalShortcut>;

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut);
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut);

/// To be called before the types are sent.
void registerPortalShortcuts();

/// The shortcut of that name in an argument; absent when it is not among them, or the argument is
/// of another type.
std::optional<PortalShortcut> findShortcut(const QVariant &shortcuts, const QString &id);

/// The keys in the form in which a program says which ones it would like, that of freedesktop.org for
/// shortcuts; empty for keys that type no ASCII character.
QString triggerFor(QKeyCombination keys);

/// The keys that a shortcut has. It tells them in words for the user: words that are not understood
/// are taken for the keys that were asked for. Absent when it has none.
std::optional<QKeyCombination> keysOf(const PortalShortcut &shortcut, QKeyCombination asked);

} // namespace quillmender::portal

Q_DECLARE_METATYPE(quillmender::portal::PortalShortcut)
