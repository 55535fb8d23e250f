#pragma once

#include <QDBusMessage>

namespace quillmender {

/// An answer to the call of a type that nobody expects; another one for each `turn`.
QDBusMessage nonsense(const QDBusMessage &call, int turn);

} // namespace quillmender
