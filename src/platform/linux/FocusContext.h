#pragma once

#include "platform/ChordContext.h"
#include "platform/linux/ApplicationPulse.h"
#include "platform/linux/KeyRelay.h"

#include <memory>

namespace quillmender {

/// What accessibility learned of the focused element when a capture asked for it.
struct FocusContext : ChordContext {
    enum class Role { unknown, text, password, terminal };

    Role role = Role::unknown;

    /// Null when keys take no way round.
    std::shared_ptr<KeyRelay> relay;

    /// Null when the application is not on the accessibility bus.
    std::shared_ptr<ApplicationPulse> pulse;
};

} // namespace quillmender
