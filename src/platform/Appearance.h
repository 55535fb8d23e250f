#pragma once

#include <QColor>

#include <functional>
#include <optional>

namespace quillmender {

enum class ColorScheme { noPreference, light, dark };

enum class ContrastPreference { noPreference, higher };

/// What the desktop says of colours.
struct DesktopColors {
    ColorScheme scheme = ColorScheme::noPreference;
    std::optional<QColor> accent; ///< opaque; absent when the desktop has none
    ContrastPreference contrast = ContrastPreference::noPreference;

    friend bool operator==(const DesktopColors &, const DesktopColors &) = default;
};

/// The program's own accent, where the desktop has none.
inline constexpr QRgb houseAccent = 0x4a5bd4;

/// The desktop's colours, which change while the program runs.
class Appearance {
  public:
    Appearance() = default;
    Appearance(const Appearance &) = delete;
    Appearance &operator=(const Appearance &) = delete;
    virtual ~Appearance() = default;

    virtual DesktopColors colors() = 0;

    /// One listener, which may be empty; it is called after each change.
    virtual void onChange(std::function<void()> listener) = 0;
};

} // namespace quillmender
