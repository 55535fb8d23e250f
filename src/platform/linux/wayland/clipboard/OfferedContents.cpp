#include "platform/linux/wayland/clipboard/OfferedContents.h"

#include <algorithm>

namespace quillmender::wayland {

QList<PasteboardItem> toPasteboardItems(const OfferedContents &contents) {
    if (contents.isEmpty())
        return {};
    PasteboardItem item;
    // Latin-1 keeps every byte of a name, whatever its encoding.
    for (const OfferedType &each : contents)
        item.setData(QString::fromLatin1(each.name), each.data);
    return {item};
}

OfferedContents toOfferedContents(const QList<PasteboardItem> &items) {
    OfferedContents contents;
    for (const PasteboardItem &item : items) {
        for (const PasteboardRepresentation &each : item.representations()) {
            const QByteArray name = each.type.toLatin1();
            const bool isKnown =
                std::ranges::find(contents, name, &OfferedType::name) != contents.end();
            if (!name.isEmpty() && !isKnown)
                contents.append({name, each.data});
        }
    }
    return contents;
}

} // namespace quillmender::wayland
