#include "app/TextPreview.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace quillmender {

namespace {

constexpr qsizetype longestPreview = 180;

// Where the user-perceived character after `count` of them begins; -1 when there are fewer.
qsizetype positionAfterCharacters(QStringView text, qsizetype count) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    qsizetype position = 0;
    for (qsizetype i = 0; i < count && position >= 0; ++i)
        position = finder.toNextBoundary();
    return position;
}

} // namespace

QString textPreview(const QString &text) {
    const QStringView trimmedText = QStringView(text).trimmed();

    // A captured text can be megabytes long, its preview needs the beginning only.
    QString preview;
    qsizetype looked = 4 * longestPreview;
    qsizetype end = -1;
    do {
        looked = std::min(looked * 2, trimmedText.size());
        preview = trimmedText.first(looked).toString();
        preview.replace(u'\n', u' ');
        preview.replace(u'\t', u' ');
        end = positionAfterCharacters(preview, longestPreview);
    } while ((end < 0 || end >= looked) && looked < trimmedText.size());

    if (end >= 0 && end < trimmedText.size()) {
        preview.truncate(end);
        preview.append(u'…');
    }
    return preview;
}

} // namespace quillmender
