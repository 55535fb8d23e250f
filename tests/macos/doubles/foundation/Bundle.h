#pragma once

#include <optional>
#include <string>

namespace quillmender::doubles {

/// The Info dictionary of the main bundle.
struct Bundle {
    static Bundle &shared();

    std::optional<std::string> shortVersion;
    bool versionIsText = true;
};

} // namespace quillmender::doubles
