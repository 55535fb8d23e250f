#pragma once

#include "platform/linux/KeyDetour.h"

#include <memory>

namespace quillmender {

/// What accessibility last learned of the focused element; key events ask it before they type.
struct FocusRecord {
    enum class Role { unknown, text, password, terminal };

    Role role = Role::unknown;

    /// Null when keys take no detour.
    std::shared_ptr<KeyDetour> detour;
};

} // namespace quillmender
