#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/selection/ClipboardChanges.h"
#include "platform/linux/x11/selection/LateReader.h"
#include "platform/linux/x11/selection/PrimaryLoan.h"
#include "platform/linux/x11/selection/SelectionOwner.h"

namespace quillmender::x11 {

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

} // namespace quillmender::x11
