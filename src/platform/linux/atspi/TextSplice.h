#pragma once

#include <QString>

namespace quillmender::atspi {

/// The one change that turns a text into another: everything before and after it stays. Counted
/// in UTF-16 units, never between the halves of a surrogate pair.
struct TextSplice {
    qint64 start = 0;
    QString removed;
    QString inserted;

    bool isEmpty() const { return removed.isEmpty() && inserted.isEmpty(); }
};

TextSplice computeSplice(const QString &from, const QString &to);

} // namespace quillmender::atspi
