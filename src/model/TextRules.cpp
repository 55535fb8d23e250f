#include "model/TextRules.h"

namespace quillmender {

namespace {

template <typename IsBlank> QString trimmedOf(const QString &text, IsBlank isBlank) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text.at(begin)))
        ++begin;
    while (end > begin && isBlank(text.at(end - 1)))
        --end;
    return text.mid(begin, end - begin);
}

} // namespace

QString trimmed(const QString &text) {
    return trimmedOf(text, [](QChar character) { return character.isSpace(); });
}

QString trimmedKey(const QString &key) {
    return trimmedOf(key, [](QChar character) {
        return character.isSpace() || character.category() == QChar::Other_Format;
    });
}

QByteArray toValidUtf8(const QString &text) {
    if (text.isValidUtf16())
        return text.toUtf8();
    QString valid = text;
    for (qsizetype index = 0; index < valid.size(); ++index) {
        const auto unit = valid.at(index);
        if (!unit.isSurrogate())
            continue;
        const auto isPair = unit.isHighSurrogate() && index + 1 < valid.size() &&
                            valid.at(index + 1).isLowSurrogate();
        if (isPair)
            ++index;
        else
            valid[index] = QChar::ReplacementCharacter;
    }
    return valid.toUtf8();
}

} // namespace quillmender
