#pragma once

#include "platform/linux/atspi/AtspiTypes.h"

#include <QDBusArgument>
#include <QVariant>

#include <optional>

namespace quillmender::atspi {

/// The compound value of an answer, at its start. Absent when its D-Bus signature is another: Qt
/// takes a compound value apart as it is told to, and ends the program where it cannot.
std::optional<QDBusArgument> compound(const QVariant &value, const char *signature);

/// Of signature `a(so)`, the first `maximum` of them; empty for a value of another type.
QList<ObjectRef> decodeObjects(const QVariant &value, qsizetype maximum);

/// Of signature `au`; no state for a value of another type.
StateSet decodeStates(const QVariant &value);

/// The first object that the relation leads to, in a set of signature `a(ua(so))`; null when there
/// is none and for a value of another type.
ObjectRef decodeRelation(const QVariant &value, uint relation);

} // namespace quillmender::atspi
