#pragma once

#include "ui/Card.h"

namespace quillmender {

class ActionPickerModel;
class ErrorLabel;
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
    ErrorLabel *error() const { return error_; }
    Spinner *spinner() const { return spinner_; }

  private:
    QLayout *firstLine();

    TextLabel *title_;
    QWidget *progressBox_;
    Spinner *spinner_;
    TextLabel *progress_;
    TextLabel *preview_;
    TextLabel *description_;
    ErrorLabel *error_;
    QWidget *accessRow_;
    PushButton *accessButton_;
};

} // namespace quillmender
