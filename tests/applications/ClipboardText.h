#pragma once

#include <QByteArray>
#include <QString>

namespace quillmender::applications {

/// What an application meant by the bytes of its UTF8_STRING. An entry of Tk writes each half of a
/// surrogate pair on its own, which is not UTF-8; here the halves are joined again.
QString meantText(const QByteArray &bytes);

/// Between its lines: "LF", "CR LF" or "both"; empty for a text of one line.
QString lineEndsOf(const QString &text);

} // namespace quillmender::applications
