#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace quillmender {

inline constexpr quint32 controlModifier = 0x40000;
inline constexpr quint32 optionModifier = 0x80000;
inline constexpr quint32 commandModifier = 0x100000;

struct StatusMenuItem {
    QString title;
    QString keyEquivalent;               ///< empty for none
    quint32 modifiers = commandModifier; ///< of the key equivalent
    bool hidden = false;
    std::function<void()> handler;
};

struct StatusItem {
    QString symbol;
    QString accessibilityDescription;
    QString toolTip;
    QList<StatusMenuItem> menu;
};

enum class ColorScheme { noPreference, light, dark };

struct Appearance {
    ColorScheme colorScheme = ColorScheme::noPreference;
    std::optional<quint32> accentColor; ///< 0xRRGGBB; absent when the desktop has none

    friend bool operator==(const Appearance &, const Appearance &) = default;
};

/// How the program shows itself on the desktop: status item, windows' standing, symbols, colours.
class Presence {
  public:
    Presence() = default;
    Presence(const Presence &) = delete;
    Presence &operator=(const Presence &) = delete;
    virtual ~Presence() = default;

    /// No Dock icon, no task-bar entry, no application menu.
    virtual void setAccessoryPolicy() = 0;

    /// Shows the item as soon as, and whenever, the desktop has a status area.
    virtual void showStatusItem(const StatusItem &item) = 0;
    virtual void updateStatusMenuItem(int index, const QString &title, bool hidden) = 0;

    /// Window attributes of the floating panel: above others, on all desktops, a dialog. Called
    /// whenever the native window was made; `windowId` is the toolkit's native identifier.
    virtual void applyPanelAttributes(quintptr windowId) = 0;

    /// The same for an ordinary titled window of fixed size. Nothing to do where the toolkit's own
    /// flags say all of it.
    virtual void applyWindowAttributes(quintptr windowId) = 0;

    /// Makes the window key and front, whatever application is in front now.
    virtual void activateWindow(quintptr windowId) = 0;

    /// The named system symbol as premultiplied 32-bit ARGB (native byte order), row by row,
    /// `pixelSize` squared, drawn in `color` (0xAARRGGBB). Empty when there is no such symbol.
    virtual QByteArray symbolImage(const QString &name, int pixelSize, quint32 color) = 0;

    virtual Appearance appearance() = 0;

    /// One listener; it is called when the desktop's colours change while the program runs.
    virtual void onAppearanceChange(std::function<void()> listener) = 0;
};

} // namespace quillmender
