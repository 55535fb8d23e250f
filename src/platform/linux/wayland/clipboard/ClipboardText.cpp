#include "platform/linux/wayland/clipboard/ClipboardText.h"

#include <QStringConverter>

#include <algorithm>
#include <array>

namespace quillmender::wayland {

namespace {

/// Best first, as they are compared: without blanks, in small letters.
constexpr std::array usualTypes{"text/plain;charset=utf-8", "utf8_string", "text/plain", "string",
                                "text"};

qsizetype rankOf(const QByteArray &type) {
    const QByteArray compared = type.toLower().replace(' ', "");
    return std::ranges::find(usualTypes, compared) - usualTypes.begin();
}

/// The half of a surrogate pair that the three bytes at the position encode; null when they are
/// none.
QChar surrogateAt(const QByteArray &bytes, qsizetype position) {
    const auto byte = [&](qsizetype offset) {
        return static_cast<unsigned char>(bytes.at(position + offset));
    };
    const bool isOne = position + 3 <= bytes.size() && byte(0) == 0xed &&
                       (byte(1) & 0xe0U) == 0xa0 && (byte(2) & 0xc0U) == 0x80;
    return isOne
               ? QChar(static_cast<char16_t>(0xd000U | (byte(1) & 0x3fU) << 6 | (byte(2) & 0x3fU)))
               : QChar();
}

/// Tk, which comes over the bridge to X11, encodes both halves of a pair one by one.
QByteArray withPairsJoined(QByteArray bytes) {
    for (qsizetype at = bytes.indexOf('\xed'); at >= 0; at = bytes.indexOf('\xed', at + 1)) {
        const QChar high = surrogateAt(bytes, at);
        const QChar low = surrogateAt(bytes, at + 3);
        if (high.isHighSurrogate() && low.isLowSurrogate())
            bytes.replace(at, 6, (QString(high) + low).toUtf8());
    }
    return bytes;
}

} // namespace

QList<QByteArray> textTypes(const QList<QByteArray> &types) {
    QList<QByteArray> found;
    for (qsizetype rank = 0; rank < std::ssize(usualTypes); ++rank) {
        std::ranges::copy_if(types, std::back_inserter(found),
                             [rank](const QByteArray &type) { return rankOf(type) == rank; });
    }
    return found;
}

QString decodeText(const QByteArray &type, const QByteArray &bytes) {
    QByteArray text = bytes;
    while (text.endsWith('\0'))
        text.chop(1);
    if (text.contains('\xed'))
        text = withPairsJoined(text);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString decoded = decoder.decode(text);
    const bool isUtf8ByName = type.toLower().contains("utf");
    // Programs put UTF-8 there whatever the name says, but for those that come over the bridge to
    // X11.
    return decoder.hasError() && !isUtf8ByName ? QString::fromLatin1(text) : decoded;
}

std::optional<QString> findText(const OfferedContents &contents) {
    QList<QByteArray> types;
    for (const OfferedType &each : contents)
        types.append(each.name);
    const QList<QByteArray> texts = textTypes(types);
    if (texts.isEmpty())
        return std::nullopt;
    const QByteArray &best = texts.constFirst();
    return decodeText(best, std::ranges::find(contents, best, &OfferedType::name)->data);
}

OfferedContents makeTemporaryText(const QString &text) {
    const QByteArray utf8 = text.toUtf8();
    return {{"text/plain;charset=utf-8", utf8},
            {"UTF8_STRING", utf8},
            {"text/plain", utf8},
            {"STRING", utf8},
            {"TEXT", utf8},
            {clipboardManagerMark, "secret"}};
}

} // namespace quillmender::wayland
