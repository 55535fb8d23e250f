#pragma once

#include "platform/linux/x11/selection/SelectionContents.h"

#include <QCoroTask>

namespace quillmender::x11 {

/// Asks the desktop's clipboard manager to take over what this program offers as CLIPBOARD, so that
/// it outlives the program. Completes when that is done, refused, there is no manager, or after two
/// seconds.
QCoro::Task<> handOverClipboard(X11Connection &connection, SelectionContents contents);

} // namespace quillmender::x11
