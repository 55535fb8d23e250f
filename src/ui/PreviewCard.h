#pragma once

#include "ui/Card.h"

namespace quillmender {

class ActionPickerModel;
class PushButton;
class Spinner;
class TextLabel;

/// What was captured, what is being done with it, and what went wrong.
class PreviewCard : public Card {
    Q_OBJECT

  public:
    PreviewCard(Theme &theme, QWidget *parent = nullptr);

    void render(const ActionPickerModel &model);
    PushButton *accessButton() const { return accessButton_; }
    Spinner *spinner() const { return spinner_; }

  private:
    TextLabel *title_;
    QWidget *progressRow_;
    Spinner *spinner_;
    TextLabel *progress_;
    TextLabel *preview_;
    TextLabel *description_;
    TextLabel *error_;
    QWidget *accessRow_;
    PushButton *accessButton_;
};

} // namespace quillmender
