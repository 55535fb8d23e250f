#pragma once

#include "platform/PasteboardItem.h"
#include "platform/linux/x11/X11Property.h"

#include <QList>

namespace quillmender::x11 {

/// One target that a selection's owner offers, with the property that it answers for it.
struct SelectionTarget {
    xcb_atom_t target = XCB_ATOM_NONE;
    X11Property property;

    friend bool operator==(const SelectionTarget &, const SelectionTarget &) = default;
};

/// All data targets of a selection, in the order in which the owner declared them.
using SelectionContents = QList<SelectionTarget>;

/// A selection is one pasteboard item; the property's type and format travel in `platformTag`.
QList<PasteboardItem> toPasteboardItems(X11Connection &connection,
                                        const SelectionContents &contents);

/// Several items become one, the first with a type wins. A representation without a tag is offered
/// as bytes of the type that it is named by.
SelectionContents toSelectionContents(X11Connection &connection,
                                      const QList<PasteboardItem> &items);

} // namespace quillmender::x11
