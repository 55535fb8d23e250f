#pragma once

#include "platform/Presence.h"
#include "ui/Colors.h"

#include <QHash>
#include <QObject>
#include <QPixmap>

namespace quillmender {

/// The colours and symbols of all windows. It follows the desktop's colour scheme and accent while
/// the program runs, and gives the application the matching palette. One per program.
class Theme : public QObject {
    Q_OBJECT

  public:
    /// Takes the presence's one appearance listener; the presence outlives the theme.
    explicit Theme(Presence &presence);
    ~Theme() override;

    const Colors &colors() const { return colors_; }

    /// The symbol at `size` device-independent pixels, sharp at that device pixel ratio. Null when
    /// there is no such symbol.
    QPixmap symbol(const QString &name, int size, double devicePixelRatio, const QColor &color);

  Q_SIGNALS:
    void changed();

  private:
    void follow();

    Presence &presence_;
    bool desktopIsDark_;
    Colors colors_;
    QHash<QString, QPixmap> symbols_;
};

} // namespace quillmender
