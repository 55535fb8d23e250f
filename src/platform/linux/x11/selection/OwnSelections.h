#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/selection/ClipboardChanges.h"
#include "platform/linux/x11/selection/LateReader.h"
#include "platform/linux/x11/selection/PrimaryLoan.h"
#include "platform/linux/x11/selection/SelectionOwner.h"

namespace quillmender::x11 {

/// What this program offers to other applications as their CLIPBOARD and PRIMARY selections.
struct OwnSelections {
    OwnSelections(X11Connection &server, const ChordWatch &watch, SelectionReach whom)
        : connection(server),
          reach(whom),
          changes(server),
          clipboard(server, server.atom("CLIPBOARD"), whom),
          primary(server, whom),
          late(watch, clipboard, primary.owner()) {}

    X11Connection &connection;
    const SelectionReach reach;
    ClipboardChanges changes;
    SelectionOwner clipboard;
    PrimaryLoan primary;
    LateReader late;
};

} // namespace quillmender::x11
