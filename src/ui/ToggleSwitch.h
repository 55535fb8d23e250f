#pragma once

#include "ui/Theme.h"

#include <QCheckBox>

namespace quillmender {

/// A text with a switch at its end; a click anywhere on it switches.
class ToggleSwitch : public QCheckBox {
    Q_OBJECT

  public:
    ToggleSwitch(Theme &theme, const QString &text, QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;
};

} // namespace quillmender
