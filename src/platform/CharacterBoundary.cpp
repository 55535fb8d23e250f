#include "platform/CharacterBoundary.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace quillmender {

namespace {

bool isPlain(QChar character) {
    return character.unicode() >= 0x20 && character.unicode() < 0x7f;
}

// Looks at the neighbourhood only: segmenting megabytes for one position would be felt. Between
// two plain ASCII characters there is always a boundary, so the search starts at the last such
// place before the position.
bool isCharacterBoundary(const QString &text, qsizetype position) {
    if (position == 0 || position == text.size())
        return true;
    if (isPlain(text[position - 1]) && isPlain(text[position]))
        return true;

    qsizetype start = position;
    while (start > 0 && (start == position || !isPlain(text[start - 1]) || !isPlain(text[start])))
        --start;
    const qsizetype end = std::min(text.size(), position + 2);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.constData() + start,
                               end - start);
    finder.setPosition(position - start);
    return finder.isAtBoundary();
}

} // namespace

bool fallsOnCharacterBoundaries(const QString &text, TextRange range) {
    if (range.location < 0 || range.length < 0 || range.location > text.size() ||
        range.length > text.size() - range.location)
        return false;
    return isCharacterBoundary(text, range.location) &&
           isCharacterBoundary(text, range.location + range.length);
}

} // namespace quillmender
