#include "applications/ClipboardText.h"

namespace quillmender::applications {

namespace {

constexpr qsizetype halfSize = 3;

/// The UTF-16 unit that three bytes at the position encode; 0 when they are no half of a pair.
char16_t halfAt(const QByteArray &bytes, qsizetype position) {
    if (position + halfSize > bytes.size())
        return 0;
    const auto byte = [&](qsizetype offset) {
        return static_cast<unsigned char>(bytes[position + offset]);
    };
    constexpr unsigned lead = 0xED;
    constexpr unsigned leastSecond = 0xA0;
    if (byte(0) != lead || byte(1) < leastSecond)
        return 0;
    return static_cast<char16_t>((0xDU << 12U) | ((byte(1) & 0x3FU) << 6U) | (byte(2) & 0x3FU));
}

} // namespace

QString meantText(const QByteArray &bytes) {
    QString text;
    qsizetype from = 0;
    for (qsizetype position = 0; position < bytes.size(); ++position) {
        const char16_t half = halfAt(bytes, position);
        if (half == 0)
            continue;
        text += QString::fromUtf8(bytes.mid(from, position - from)) + QChar(half);
        from = position + halfSize;
        position = from - 1;
    }
    return text + QString::fromUtf8(bytes.mid(from));
}

QString lineEndsOf(const QString &text) {
    qsizetype end = text.size();
    while (end > 0 && (text[end - 1] == u'\n' || text[end - 1] == u'\r'))
        --end;
    const QStringView lines = QStringView(text).left(end);
    const qsizetype windows = lines.count(QStringLiteral("\r\n"));
    const qsizetype all = lines.count(u'\n');
    if (all == 0)
        return {};
    if (windows == 0)
        return QStringLiteral("LF");
    return windows == all ? QStringLiteral("CR LF") : QStringLiteral("both");
}

} // namespace quillmender::applications
