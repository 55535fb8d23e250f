#pragma once

#include <QString>
#include <QTextBoundaryFinder>

namespace quillmender::harness {

/// Of user-perceived characters: what an arrow key moves over at once.
inline int countCharacters(const QString &text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

} // namespace quillmender::harness
