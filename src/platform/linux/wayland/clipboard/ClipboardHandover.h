#pragma once

#include "platform/linux/wayland/clipboard/OfferedContents.h"

#include <QCoroTask>

#include <functional>

namespace quillmender::wayland {

/// Leaves a process of this program behind that goes on serving what this one offers as the
/// clipboard. It is told to as long as the clipboard is `stillOurs` when it is ready. Completes
/// when it has taken over, does not come to it, or after two seconds; it goes on by itself then.
QCoro::Task<> handOverClipboard(OfferedContents contents, std::function<bool()> stillOurs);

} // namespace quillmender::wayland
