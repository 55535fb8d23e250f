#pragma once

#include "platform/linux/x11/ClipboardChanges.h"
#include "platform/linux/x11/LateReader.h"
#include "platform/linux/x11/PrimaryLoan.h"
#include "platform/linux/x11/SelectionOwner.h"
#include "platform/linux/x11/X11Connection.h"

namespace quillmender {

/// What this program offers to other applications as their CLIPBOARD and PRIMARY selections.
struct OwnSelections {
    OwnSelections(X11Connection &server, const ChordWatch &watch)
        : connection(server),
          changes(server),
          clipboard(server, server.atom("CLIPBOARD")),
          primary(server),
          late(watch, clipboard, primary.owner()) {}

    X11Connection &connection;
    ClipboardChanges changes;
    SelectionOwner clipboard;
    PrimaryLoan primary;
    LateReader late;
};

} // namespace quillmender
