#pragma once

#include "platform/linux/terminal/ProcessTable.h"

namespace quillmender {

/// Whether the process is a full-screen editor that reads its keys from the device and asks the
/// terminal to say where a paste begins and ends, so that a pasted line end is text to it,
/// whatever it is doing. False when that cannot be told.
bool isFullScreenEditor(const ProcessEntry &process, dev_t device);

} // namespace quillmender
