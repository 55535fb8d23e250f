#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillmender::doubles {

/// What every program sees on the general pasteboard.
struct GeneralPasteboard {
    /// Types in their order; no bytes for a promise that is not kept.
    using Item = std::vector<std::pair<std::string, std::optional<std::string>>>;

    static GeneralPasteboard &shared();

    /// What another program copies.
    void copyFromElsewhere(std::vector<Item> copied);
    std::optional<std::string> text() const;

    std::vector<Item> items;
    long changeCount = 7;
    bool hasNoItemList = false; ///< `pasteboardItems` is nil
    bool refusesWrites = false;
    std::string refusedType; ///< an item does not take it
};

} // namespace quillmender::doubles
