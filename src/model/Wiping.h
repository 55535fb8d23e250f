#pragma once

#include <QByteArray>
#include <QString>

namespace quillmender {

/// Overwrites a secret before its memory is given back. One that somebody else still holds as well
/// is left to the last holder.
void wipe(QByteArray &secret);
void wipe(QString &secret);

} // namespace quillmender
