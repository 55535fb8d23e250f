#pragma once

#include <string>
#include <vector>

namespace quillmender::doubles {

/// What the user sees in the system's status bar.
struct StatusArea {
    struct MenuItem {
        std::string title;
        std::string keyEquivalent;
        unsigned long modifiers = 0;
        bool hidden = false;
    };

    static StatusArea &shared();

    int itemCount() const;
    double length() const;
    std::string symbol() const;
    std::string accessibilityDescription() const;
    std::string toolTip() const;
    std::vector<MenuItem> menu() const;

    /// The user chooses it. False when nothing would happen.
    bool choose(int index) const;

    bool hasNoButtons = false;
    std::vector<void *> items; ///< NSStatusItem, not retained
};

} // namespace quillmender::doubles
