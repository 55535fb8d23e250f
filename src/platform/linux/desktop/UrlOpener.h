#pragma once

#include <QUrl>

namespace quillmender {

/// Opens the URL with the desktop's handler, detached. A link into the system's privacy settings
/// opens the desktop's own page instead. False when there is nothing that opens it.
bool openUrlOnDesktop(const QUrl &url);

} // namespace quillmender
