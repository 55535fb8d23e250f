#pragma once

#include <QDeadlineTimer>
#include <QString>

namespace quillmender::atspi {

/// Whether a message bus behind this D-Bus address authenticates us before the deadline. Qt's own
/// connection waits without limit for a bus that accepts and then says nothing, and every other
/// connection of the process waits with it; so a bus is asked here first. Blocks until then.
bool busAuthenticates(const QString &address, QDeadlineTimer deadline);

/// The file name of the first Unix socket in a D-Bus address, in the form of sockaddr_un (an
/// abstract name begins with NUL); empty when there is none.
QByteArray unixSocketName(const QString &address);

} // namespace quillmender::atspi
