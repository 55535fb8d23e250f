#pragma once

#include "ui/Theme.h"
#include "ui/style/Metrics.h"

#include <QCheckBox>

namespace quillmender {

/// A text with a switch at its end; a click anywhere on it switches.
class ToggleSwitch : public QCheckBox {
    Q_OBJECT

  public:
    ToggleSwitch(Theme &theme, const QString &text, QWidget *parent = nullptr);

    /// How far before the widget's edge the switch ends; the focus ring needs the room.
    static constexpr int outerMargin = metrics::switchMargin;

    QSize minimumSizeHint() const override;
};

} // namespace quillmender
