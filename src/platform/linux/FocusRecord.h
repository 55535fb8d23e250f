#pragma once

namespace quillmender {

/// What accessibility last learned of the focused element; key events ask it before they type.
struct FocusRecord {
    enum class Role { unknown, text, password, terminal };

    Role role = Role::unknown;
};

} // namespace quillmender
