#pragma once

#include <QString>

namespace quillmender {

/// Windows, pixmaps and all else that a process holds on an X server, over all its connections.
qint64 serverResources(qint64 processId, const QString &display);

} // namespace quillmender
