#include "model/TextRules.h"

namespace quillmender {

QString trimmed(const QString &text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text.at(begin).isSpace())
        ++begin;
    while (end > begin && text.at(end - 1).isSpace())
        --end;
    return text.mid(begin, end - begin);
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
