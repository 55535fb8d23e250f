#include "providers/ErrorText.h"

#include "providers/SecretMask.h"

namespace quillmender {

namespace {

/// What a message needs, and little enough to be laid out at once whatever it consists of.
constexpr qsizetype longestText = 1024;

/// Fonts have no shapes for them, and looking for some takes seconds.
bool isControl(QChar sign) {
    return sign.category() == QChar::Other_Control && !sign.isSpace();
}

} // namespace

QString errorText(const QString &text, const QString &apiKey) {
    // Half a key at the end would not be found.
    QString shown = text.left(longestText + longestDisguise * apiKey.size());
    maskSecret(shown, apiKey);
    const bool isCut = text.size() > longestText;
    if (isCut) {
        const bool splits = shown.at(longestText - 1).isHighSurrogate();
        shown.truncate(splits ? longestText - 1 : longestText);
    }
    for (QChar &sign : shown) {
        if (isControl(sign))
            sign = u' ';
    }
    return isCut ? shown + u'…' : shown;
}

} // namespace quillmender
