#pragma once

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QString>

namespace quillmender {

/// An object as the accessibility protocol names it.
struct ObjectReference {
    QString service;
    QDBusObjectPath path;
};

inline QDBusArgument &operator<<(QDBusArgument &argument, const ObjectReference &object) {
    argument.beginStructure();
    argument << object.service << object.path;
    argument.endStructure();
    return argument;
}

// NOLINTBEGIN(bugprone-return-const-ref-from-parameter): the signature that the bus library wants
inline const QDBusArgument &operator>>(const QDBusArgument &argument, ObjectReference &object) {
    argument.beginStructure();
    argument >> object.service >> object.path;
    argument.endStructure();
    return argument;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

} // namespace quillmender
