#include "providers/ErrorText.h"

#include <QUrl>

namespace quillmender {

namespace {

constexpr qsizetype longestText = 4096;

/// What is shorter is no key that could be found again among words.
constexpr qsizetype shortestKey = 8;

/// As many bullets, so that nothing behind moves.
void mask(QString &text, const QString &secret) {
    if (secret.size() >= shortestKey)
        text.replace(secret, QString(secret.size(), u'•'), Qt::CaseInsensitive);
}

} // namespace

QString errorText(const QString &text, const QString &apiKey) {
    const QString encodedKey = QString::fromLatin1(QUrl::toPercentEncoding(apiKey));
    // Half a key at the end would not be found.
    QString shown = text.left(longestText + encodedKey.size());
    mask(shown, apiKey);
    mask(shown, encodedKey);
    if (text.size() <= longestText)
        return shown;
    qsizetype end = longestText;
    if (shown.at(end - 1).isHighSurrogate())
        --end;
    return shown.left(end) + u'…';
}

} // namespace quillmender
