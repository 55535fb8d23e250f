#pragma once

namespace quillmender {

/// A flexible column of a grid: it shares what is left of the width. Device-independent pixels.
struct GridColumn {
    int minimumWidth = 10;
    int spacing = 12; ///< to the next column, and between its rows
};

} // namespace quillmender
