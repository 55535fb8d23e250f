#pragma once

#include <optional>

namespace quillmender::doubles {

/// Components from 0 to 1 in sRGB.
struct AccentColor {
    double red = 0;
    double green = 0;
    double blue = 0;
};

/// The appearance and the accent colour that the user has chosen.
struct SystemColors {
    static SystemColors &shared();

    /// Each tells the observers.
    void becomeDark(bool dark);
    void changeAccent(std::optional<AccentColor> color);

    bool isDark = false;
    bool hasNoAppearance = false;
    std::optional<AccentColor> accent; ///< none: it has no form in another colour space
};

} // namespace quillmender::doubles
