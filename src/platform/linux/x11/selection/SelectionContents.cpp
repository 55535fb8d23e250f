#include "platform/linux/x11/selection/SelectionContents.h"

#include "platform/linux/x11/X11Connection.h"

#include <algorithm>

namespace quillmender::x11 {

namespace {

QByteArray makeTag(const QByteArray &type, quint8 format) {
    return QByteArray::number(format) + ' ' + type;
}

X11Property makeProperty(X11Connection &connection, const PasteboardRepresentation &from) {
    const qsizetype blank = from.platformTag.indexOf(' ');
    const int format = from.platformTag.left(blank).toInt();
    if (blank < 0 || (format != 8 && format != 16 && format != 32))
        return {connection.atom(from.type.toLatin1()), 8, from.data};
    return {connection.atom(from.platformTag.mid(blank + 1)), static_cast<quint8>(format),
            from.data};
}

} // namespace

QList<PasteboardItem> toPasteboardItems(X11Connection &connection,
                                        const SelectionContents &contents) {
    if (contents.isEmpty())
        return {};
    QList<xcb_atom_t> atoms;
    for (const SelectionTarget &each : contents)
        atoms << each.target << each.property.type;
    const QList<QByteArray> names = connection.atomNames(atoms);
    PasteboardItem item;
    for (qsizetype i = 0; i < contents.size(); ++i) {
        const X11Property &property = contents[i].property;
        // Latin-1 keeps every byte of a name, whatever its encoding.
        item.setData(QString::fromLatin1(names[2 * i]), property.value,
                     makeTag(names[2 * i + 1], property.format));
    }
    return {item};
}

SelectionContents toSelectionContents(X11Connection &connection,
                                      const QList<PasteboardItem> &items) {
    SelectionContents contents;
    for (const PasteboardItem &item : items) {
        for (const PasteboardRepresentation &each : item.representations()) {
            const xcb_atom_t target = connection.atom(each.type.toLatin1());
            const bool isKnown =
                std::ranges::find(contents, target, &SelectionTarget::target) != contents.end();
            if (target != XCB_ATOM_NONE && !isKnown)
                contents.append({target, makeProperty(connection, each)});
        }
    }
    return contents;
}

} // namespace quillmender::x11
