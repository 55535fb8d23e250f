#pragma once

#include "platform/linux/wayland/clipboard/Descriptor.h"
#include "platform/linux/wayland/clipboard/OfferedContents.h"

#include <optional>

namespace quillmender::wayland {

/// Contents in a file that is in memory alone, for another process of this same program. Closed
/// when there is no memory for it.
Descriptor writeContentsFile(const OfferedContents &contents);

/// The contents of such a file, in the memory that the file has: it stays mapped for good. Absent
/// when it is none.
std::optional<OfferedContents> readContentsFile(const Descriptor &file);

} // namespace quillmender::wayland
