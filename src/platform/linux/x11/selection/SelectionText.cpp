#include "platform/linux/x11/selection/SelectionText.h"

#include "platform/linux/x11/X11Connection.h"

#include <algorithm>

namespace quillmender::x11 {

namespace {

constexpr auto utf8MimeType = "text/plain;charset=utf-8";

/// The half of a surrogate pair that the three bytes at the position encode; 0 when they are none.
char16_t surrogateAt(const QByteArray &bytes, qsizetype position) {
    const auto byte = [&](qsizetype offset) {
        return static_cast<unsigned char>(bytes.at(position + offset));
    };
    const bool fits = position + 3 <= bytes.size();
    if (!fits || byte(0) != 0xed || (byte(1) & 0xe0U) != 0xa0 || (byte(2) & 0xc0U) != 0x80)
        return 0;
    return static_cast<char16_t>(0xd000U | (byte(1) & 0x3fU) << 6 | (byte(2) & 0x3fU));
}

/// Tk encodes both halves of a surrogate pair, which is no UTF-8, and means the character.
QString decodeUtf8(const QByteArray &bytes) {
    QString text;
    qsizetype decoded = 0;
    for (qsizetype position = bytes.indexOf('\xed'); position >= 0;
         position = bytes.indexOf('\xed', position + 1)) {
        const QChar high(surrogateAt(bytes, position));
        const QChar low(surrogateAt(bytes, position + 3));
        if (position < decoded || !high.isHighSurrogate() || !low.isLowSurrogate())
            continue;
        text += QString::fromUtf8(bytes.mid(decoded, position - decoded)) + high + low;
        decoded = position + 6;
    }
    return text + QString::fromUtf8(bytes.mid(decoded));
}

/// Compound text in its initial state is Latin-1; of its escapes we know the ones around UTF-8.
std::optional<QString> decodeCompoundText(const QByteArray &bytes) {
    const QByteArray toUtf8("\x1b%G");
    const QByteArray back("\x1b%@");
    QString text;
    qsizetype position = 0;
    while (position < bytes.size()) {
        const qsizetype escape = bytes.indexOf('\x1b', position);
        text += QString::fromLatin1(bytes.mid(position, escape < 0 ? -1 : escape - position));
        if (escape < 0)
            break;
        if (bytes.mid(escape, toUtf8.size()) != toUtf8)
            return std::nullopt;
        const qsizetype start = escape + toUtf8.size();
        qsizetype end = bytes.indexOf(back, start);
        end = end < 0 ? bytes.size() : end;
        text += QString::fromUtf8(bytes.mid(start, end - start));
        position = end + back.size();
    }
    return text;
}

QByteArray withoutTerminator(QByteArray bytes) {
    while (bytes.endsWith('\0'))
        bytes.chop(1);
    return bytes;
}

} // namespace

QList<xcb_atom_t> textTargets(X11Connection &connection) {
    return {connection.atom("UTF8_STRING"), connection.atom(utf8MimeType), XCB_ATOM_STRING,
            connection.atom("TEXT"), connection.atom("COMPOUND_TEXT")};
}

std::optional<QString> decodeText(X11Connection &connection, const X11Property &property) {
    if (property.format != 8)
        return std::nullopt;
    const QByteArray bytes = withoutTerminator(property.value);
    if (property.type == XCB_ATOM_STRING)
        return QString::fromLatin1(bytes);
    if (property.type == connection.atom("UTF8_STRING") ||
        property.type == connection.atom(utf8MimeType))
        return decodeUtf8(bytes);
    if (property.type == connection.atom("COMPOUND_TEXT"))
        return decodeCompoundText(bytes);
    return std::nullopt;
}

std::optional<QString> findText(X11Connection &connection, const SelectionContents &contents) {
    for (const xcb_atom_t target : textTargets(connection)) {
        const auto found = std::ranges::find(contents, target, &SelectionTarget::target);
        if (found == contents.end())
            continue;
        if (auto text = decodeText(connection, found->property))
            return text;
    }
    return std::nullopt;
}

SelectionContents makeTemporaryText(X11Connection &connection, const QString &text) {
    const QByteArray utf8 = text.toUtf8();
    const xcb_atom_t utf8String = connection.atom("UTF8_STRING");
    const xcb_atom_t utf8Mime = connection.atom(utf8MimeType);
    const xcb_atom_t plainMime = connection.atom("text/plain");
    const xcb_atom_t mark = connection.atom(clipboardManagerMark);
    return {{utf8String, {utf8String, 8, utf8}},
            {utf8Mime, {utf8Mime, 8, utf8}},
            {plainMime, {plainMime, 8, utf8}},
            {XCB_ATOM_STRING, {XCB_ATOM_STRING, 8, text.toLatin1()}},
            {connection.atom("TEXT"), {utf8String, 8, utf8}},
            {mark, {mark, 8, "secret"}}};
}

} // namespace quillmender::x11
