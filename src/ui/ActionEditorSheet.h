#pragma once

#include "ui/ActionEditorState.h"
#include "ui/Theme.h"

#include <QDialog>

#include <functional>

namespace quillmender {

class InstructionEditor;
class PushButton;
class TextField;

/// The dialog, modal over its window, that edits one action. It holds the edits; nothing is
/// written before `onSave`, which gets both texts trimmed.
class ActionEditorSheet : public QDialog {
    Q_OBJECT

  public:
    using Save = std::function<void(const QString &title, const QString &promptTemplate)>;

    ActionEditorSheet(Theme &theme, const ActionEditorState &editor, std::function<void()> onCancel,
                      Save onSave, QWidget *parent);

    TextField *titleField() const { return title_; }
    InstructionEditor *templateEditor() const { return promptTemplate_; }
    PushButton *okButton() const { return ok_; }
    PushButton *cancelButton() const { return cancel_; }

    /// Cancels: the title bar's button ends here, too, and Escape as long as nothing was edited.
    void reject() override;

  protected:
    void keyPressEvent(QKeyEvent *event) override;

  private:
    bool isEdited() const;
    void build(Theme &theme, const ActionEditorState &editor);
    void fit(int height);
    void updateOk();
    void save();

    ActionEditorState editor_;
    std::function<void()> onCancel_;
    Save onSave_;
    TextField *title_ = nullptr;
    InstructionEditor *promptTemplate_ = nullptr;
    PushButton *cancel_ = nullptr;
    PushButton *ok_ = nullptr;
};

} // namespace quillmender
