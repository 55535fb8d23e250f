#pragma once

#include <QCoroTask>
#include <QString>

namespace quillmender::wayland {

class DataControl;

/// Whether a text that an application has just put on the clipboard is a line that was copied
/// because nothing was selected (canBeCopiedLine): it is not the PRIMARY selection too, whose owner
/// nobody knows, and nothing of it is a table's.
QCoro::Task<bool> wasLineCopied(DataControl &control, QString text);

} // namespace quillmender::wayland
