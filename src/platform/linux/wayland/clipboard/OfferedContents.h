#pragma once

#include "platform/PasteboardItem.h"

#include <QByteArray>
#include <QList>

namespace quillmender::wayland {

/// One type that a selection is offered in, with its bytes.
struct OfferedType {
    QByteArray name;
    QByteArray data;

    friend bool operator==(const OfferedType &, const OfferedType &) = default;
};

/// Everything that a selection is offered in, in the order in which its owner declared it.
using OfferedContents = QList<OfferedType>;

/// A selection is one pasteboard item. Empty without contents.
QList<PasteboardItem> toPasteboardItems(const OfferedContents &contents);

/// Several items become one, the first with a type wins.
OfferedContents toOfferedContents(const QList<PasteboardItem> &items);

} // namespace quillmender::wayland
