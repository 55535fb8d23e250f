#pragma once

#include <QUrl>

namespace quillmender {

/// Opens the URL with the desktop's handler, detached. False when there is nothing that opens it.
bool openUrlOnDesktop(const QUrl &url);

} // namespace quillmender
