#pragma once

#include "ui/Card.h"

namespace quillmender {

class ActionPickerModel;
class InstructionEditor;
class PushButton;

/// The free instruction: an editor and the button that runs it.
class PromptCard : public Card {
    Q_OBJECT

  public:
    PromptCard(Theme &theme, QWidget *parent = nullptr);

    void render(const ActionPickerModel &model);
    InstructionEditor *editor() const { return editor_; }
    PushButton *generateButton() const { return generate_; }

  private:
    InstructionEditor *editor_;
    PushButton *generate_;
};

} // namespace quillmender
