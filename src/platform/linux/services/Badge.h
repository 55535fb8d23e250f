#pragma once

#include <QIcon>
#include <QString>

namespace quillmender {

/// The symbol in white on a tile of the house's accent, in the sizes of status areas and windows.
QIcon badge(const QString &symbol);

} // namespace quillmender
