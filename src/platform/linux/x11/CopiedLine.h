#pragma once

#include <QCoroTask>
#include <QString>

namespace quillmender {

class X11Connection;

/// Whether a text that an application has just put on CLIPBOARD is the line that editors for code
/// copy when nothing is selected: it ends with a line feed and has no other, and the application
/// does not have it as PRIMARY selection too. The cell of a spreadsheet looks the same and is none.
QCoro::Task<bool> isCopiedLine(X11Connection &connection, QString text);

} // namespace quillmender
