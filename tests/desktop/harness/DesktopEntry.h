#pragma once

#include <QString>

namespace quillmender::harness {

class DesktopFolders;

/// Writes the packaged desktop entry, the one of `program` now, among those of the desktop's user.
/// False when it is there already.
bool installDesktopEntry(const DesktopFolders &folders, const QString &program,
                         const QString &desktopFile);

} // namespace quillmender::harness
