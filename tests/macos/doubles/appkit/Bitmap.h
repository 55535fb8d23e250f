#pragma once

#include <vector>

namespace quillmender::doubles {

/// RGBA with premultiplied alpha, the first row on top, rows padded as the real ones are.
struct Bitmap {
    Bitmap() = default;
    Bitmap(long width, long rows)
        : height(rows),
          bytesPerRow((width * 4 + 31) / 32 * 32),
          bytes(static_cast<std::size_t>(bytesPerRow * rows)) {}

    /// Black at that coverage; `y` counts from the bottom, as drawing does.
    void cover(long x, long y, unsigned char alpha) {
        bytes.at(static_cast<std::size_t>((height - 1 - y) * bytesPerRow + x * 4 + 3)) = alpha;
    }

    long height = 0;
    long bytesPerRow = 0;
    std::vector<unsigned char> bytes;
};

} // namespace quillmender::doubles
