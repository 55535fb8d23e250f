#pragma once

#include "ui/PushButton.h"

namespace quillmender {

/// A button of a row. While it is quiet only its caption is seen; it can be pressed all the same.
class RowButton : public PushButton {
    Q_OBJECT

  public:
    using PushButton::PushButton;

    void setQuiet(bool isQuiet);

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    bool isQuiet_ = true;
};

} // namespace quillmender
