#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quillmender::doubles {

/// The applications of the desktop, named by their process identifiers, and what opens URLs.
struct RunningApplications {
    static constexpr int own = 100; ///< this program

    static RunningApplications &shared();

    /// The user or a program brings it to the front; the workspace tells its observers.
    void bringToFront(int processIdentifier);

    /// This program hides: the application that was in front before is so again.
    void hideOwn();

    std::optional<int> frontmost;
    std::optional<int> frontmostBeforeOwn;
    std::set<int> terminated; ///< they cannot be activated
    bool opensUrls = true;
};

} // namespace quillmender::doubles
