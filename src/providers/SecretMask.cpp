#include "providers/SecretMask.h"

#include <QList>

#include <algorithm>

namespace quillmender {

namespace {

constexpr qsizetype shortestSecret = 8;

/// A character as a reader takes it, and where it stands.
struct Sign {
    char16_t unit;
    qsizetype start;
    qsizetype size;
};

bool isInvisible(QChar character) {
    return character.isSpace() || character.category() == QChar::Other_Format ||
           character.category() == QChar::Other_Control;
}

/// The number of so many hexadecimal digits; negative when they are none.
int hexadecimal(QStringView digits, qsizetype count) {
    bool isNumber =
        digits.size() >= count && std::ranges::all_of(digits.first(count), [](QChar digit) {
            return digit.unicode() < 0x80 && digit.isLetterOrNumber();
        });
    const int number = isNumber ? digits.first(count).toInt(&isNumber, 16) : -1;
    return isNumber ? number : -1;
}

Sign signAt(QStringView text, qsizetype position) {
    const QStringView rest = text.sliced(position);
    if (rest.startsWith(u'%')) {
        if (const int unit = hexadecimal(rest.sliced(1), 2); unit >= 0)
            return {char16_t(unit), position, 3};
    } else if (rest.startsWith(u"\\u")) {
        if (const int unit = hexadecimal(rest.sliced(2), 4); unit >= 0)
            return {char16_t(unit), position, 6};
    } else if (rest.startsWith(u"\\/")) {
        return {u'/', position, 2};
    }
    return {rest.front().unicode(), position, 1};
}

QList<Sign> signsOf(QStringView text) {
    QList<Sign> signs;
    for (qsizetype position = 0; position < text.size();) {
        Sign sign = signAt(text, position);
        position += sign.size;
        sign.unit = QChar(sign.unit).toCaseFolded().unicode();
        if (!isInvisible(QChar(sign.unit)))
            signs.append(sign);
    }
    return signs;
}

} // namespace

void maskSecret(QString &text, const QString &secret) {
    if (secret.size() < shortestSecret)
        return;
    const QList<Sign> shown = signsOf(text);
    QList<Sign> wanted;
    for (qsizetype position = 0; position < secret.size(); ++position) {
        const QChar unit = secret[position].toCaseFolded();
        if (!isInvisible(unit))
            wanted.append({unit.unicode(), position, 1});
    }
    auto from = shown.begin();
    while (!wanted.isEmpty()) {
        const auto found =
            std::search(from, shown.end(), wanted.begin(), wanted.end(),
                        [](const Sign &one, const Sign &other) { return one.unit == other.unit; });
        if (found == shown.end())
            return;
        const Sign &last = *(found + wanted.size() - 1);
        for (qsizetype i = found->start; i < last.start + last.size; ++i)
            text[i] = u'•';
        from = found + wanted.size();
    }
}

} // namespace quillmender
