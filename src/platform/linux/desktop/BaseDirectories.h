#pragma once

namespace quillmender {

/// Takes out of the environment every path of freedesktop.org's base directories
/// (`XDG_CONFIG_HOME`, `XDG_DATA_DIRS`, ...) that is not absolute: such a path counts as not given,
/// and not every library knows. Of a list the absolute ones stay.
void unsetRelativeBaseDirectories();

} // namespace quillmender
