#pragma once

#include "ui/Theme.h"

#include <QCheckBox>

namespace quillmender {

/// A text with a switch at its end; a click anywhere on it switches.
class ToggleSwitch : public QCheckBox {
    Q_OBJECT

  public:
    ToggleSwitch(Theme &theme, const QString &text, QWidget *parent = nullptr);

    /// How far before the widget's edge the switch ends; the focus ring needs the room.
    static constexpr int outerMargin = 3;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool hitButton(const QPoint &position) const override;
    void paintEvent(QPaintEvent *event) override;

  private:
    Theme &theme_;
};

} // namespace quillmender
