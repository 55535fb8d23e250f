#pragma once

#include <QCoroTask>
#include <QString>

namespace quillmender::x11 {

class X11Connection;

/// Whether a text that an application has just put on CLIPBOARD is a line that was copied because
/// nothing was selected (canBeCopiedLine): it is not the application's PRIMARY selection too, and
/// nothing of it is a table's.
QCoro::Task<bool> wasLineCopied(X11Connection &connection, QString text);

} // namespace quillmender::x11
