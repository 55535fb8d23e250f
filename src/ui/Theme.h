#pragma once

#include "platform/Appearance.h"
#include "platform/Symbols.h"
#include "ui/Colors.h"

#include <QHash>
#include <QObject>
#include <QPixmap>

namespace quillmender {

/// The colours and symbols of all windows. It follows the desktop's colour scheme, accent and wish
/// for contrast while the program runs, and gives the application the style and the matching
/// palette. One per program.
class Theme : public QObject {
    Q_OBJECT

  public:
    /// Takes the appearance's one listener. Both outlive the theme.
    Theme(Appearance &appearance, Symbols &symbols);
    ~Theme() override;

    const Colors &colors() const { return colors_; }

    /// The symbol at `size` device-independent pixels, sharp at that device pixel ratio. Null when
    /// there is no such symbol.
    QPixmap symbol(const QString &name, int size, double devicePixelRatio, const QColor &color);

  Q_SIGNALS:
    void changed();

  private:
    void follow();

    Appearance &appearance_;
    Symbols &symbols_;
    bool desktopIsDark_;
    Colors colors_;
    QHash<QString, QPixmap> drawn_;
};

} // namespace quillmender
