#include "platform/linux/terminal/TerminalText.h"

namespace quillmender {

namespace {

constexpr char16_t nextLine = 0x85;

/// The separators of Unicode are left as they are, but some terminals press Enter for them.
bool isLineEnd(QChar sign) {
    return sign == u'\n' || sign == QChar::LineSeparator || sign == QChar::ParagraphSeparator;
}

bool isControl(QChar sign) {
    return sign.unicode() < 0x20 || (sign.unicode() >= 0x7f && sign.unicode() <= 0x9f);
}

} // namespace

TerminalText makeTerminalText(const QString &text) {
    TerminalText made;
    made.text.reserve(text.size());
    QChar before;
    for (const QChar sign : text) {
        const bool isSecondHalf = sign == u'\n' && before == u'\r';
        before = sign;
        if (sign == u'\r' || sign == nextLine || (sign == u'\n' && !isSecondHalf))
            made.text += u'\n';
        else if (sign == u'\t' || !isControl(sign))
            made.text += sign;
    }
    while (!made.text.isEmpty() && isLineEnd(made.text.back()))
        made.text.chop(1);
    for (const QChar sign : std::as_const(made.text)) {
        made.hasSeveralLines = made.hasSeveralLines || isLineEnd(sign);
        made.hasTabs = made.hasTabs || sign == u'\t';
    }
    return made;
}

QString onOneLine(QString text) {
    for (QChar &sign : text) {
        if (isLineEnd(sign) || sign == u'\t')
            sign = u' ';
    }
    return text;
}

} // namespace quillmender
