#pragma once

#include <optional>
#include <string>

namespace quillmender::doubles {

/// The registration of the main application, as the system keeps it.
struct LoginItemService {
    static LoginItemService &shared();

    long status = 0;
    long statusAfterRegistration = 1;
    /// Both changes then fail with an error of this description.
    std::optional<std::string> error;
    bool refusesWithoutError = false;
};

} // namespace quillmender::doubles
