#include "ui/PromptCard.h"

#include "model/TextRules.h"
#include "ui/ActionPickerModel.h"
#include "ui/InstructionEditor.h"
#include "ui/PushButton.h"
#include "ui/TextLabel.h"
#include "ui/style/Metrics.h"

namespace quillmender {

PromptCard::PromptCard(Theme &theme, QWidget *parent) : Card(theme, parent) {
    const QString heading = QStringLiteral("Generate From Prompt");
    auto *title = new TextLabel(theme, TextStyle::headline, TextLabel::Tone::primary, this);
    title->show(heading);
    auto *help = new TextLabel(theme, TextStyle::caption, TextLabel::Tone::secondary, this);
    help->show(QStringLiteral("Type what you want to generate. Quillmender will use the captured "
                              "text as the source prompt or raw notes."));
    editor_ = new InstructionEditor(
        theme, heading,
        QStringLiteral("Example: Turn this into a formal complaint email asking for a refund."),
        this);
    generate_ =
        new PushButton(theme, QStringLiteral("Generate"), PushButton::Prominence::prominent, this);

    stack()->addWidget(title);
    stack()->addSpacing(6);
    stack()->addWidget(help);
    stack()->addSpacing(4);
    stack()->addWidget(editor_);
    stack()->addSpacing(10);
    stack()->addWidget(generate_, 0, Qt::AlignRight);
    setPadding(metrics::cardTextPadding, metrics::cardPadding);
}

void PromptCard::render(const ActionPickerModel &model) {
    const QString instruction = model.customInstruction();
    editor_->render(instruction);
    generate_->setEnabled(!model.isWorking() && !model.selectedTextPreview().isEmpty() &&
                          !trimmed(instruction).isEmpty());
}

} // namespace quillmender
