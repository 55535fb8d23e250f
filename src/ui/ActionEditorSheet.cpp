#include "ui/ActionEditorSheet.h"

#include "model/TextRules.h"
#include "ui/InstructionEditor.h"
#include "ui/PushButton.h"
#include "ui/ScrollRegion.h"
#include "ui/SlimScrollBar.h"
#include "ui/TextField.h"
#include "ui/TextLabel.h"
#include "ui/WindowPlacement.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int margin = 24;
constexpr int sheetWidth = 540;
constexpr int templateLines = 11;
constexpr int templateLinesAtLeast = 4;
constexpr int templatePadding = 24;
} // namespace

ActionEditorSheet::ActionEditorSheet(Theme &theme, const ActionEditorState &editor,
                                     std::function<void()> onCancel, Save onSave, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowCloseButtonHint),
      editor_(editor),
      onCancel_(std::move(onCancel)),
      onSave_(std::move(onSave)) {
    setWindowModality(Qt::WindowModal);
    setWindowTitle(editor.heading());
    build(theme, editor);
    connect(title_, &TextField::edited, this, &ActionEditorSheet::updateOk);
    connect(promptTemplate_, &InstructionEditor::edited, this, &ActionEditorSheet::updateOk);
    connect(cancel_, &QPushButton::clicked, this, &ActionEditorSheet::reject);
    connect(ok_, &QPushButton::clicked, this, &ActionEditorSheet::save);
    updateOk();
    title_->setFocus();
    title_->selectAll();
}

void ActionEditorSheet::build(Theme &theme, const ActionEditorState &editor) {
    auto *content = new QWidget;
    // Tab goes through the controls in the order in which they get into the window.
    auto *region = new ScrollRegion(theme, content, this);
    const auto makeLabel = [&](TextStyle style, TextLabel::Tone tone, const QString &text) {
        auto *label = new TextLabel(theme, style, tone, content);
        label->show(text);
        return label;
    };
    const auto primary = TextLabel::Tone::primary;
    const QString titleName = QStringLiteral("Button Title");
    const QString templateName = QStringLiteral("Prompt Template");
    const QString hint =
        QStringLiteral("Use `{{text}}` where the captured text should be inserted.");

    auto *heading = makeLabel(TextStyle::title, primary, editor.heading());
    auto *titleLabel = makeLabel(TextStyle::headline, primary, titleName);
    title_ = new TextField(theme, content);
    title_->setAccessibleName(titleName);
    title_->setPlaceholderText(QStringLiteral("Example: Rewrite as Email"));
    title_->render(editor.initialTitle());
    titleLabel->setBuddy(title_);

    auto *templateLabel = makeLabel(TextStyle::headline, primary, templateName);
    promptTemplate_ = new InstructionEditor(theme, templateName, QString(), content);
    promptTemplate_->setAccessibleDescription(hint);
    promptTemplate_->setFixedHeight(templateLines * promptTemplate_->fontMetrics().lineSpacing() +
                                    templatePadding);
    promptTemplate_->render(editor.initialTemplate());
    templateLabel->setBuddy(promptTemplate_);
    auto *hintLabel = makeLabel(TextStyle::caption, TextLabel::Tone::secondary, hint);
    hintLabel->setCode(TextLabel::Code::marked);

    cancel_ =
        new PushButton(theme, QStringLiteral("Cancel"), PushButton::Prominence::standard, this);
    ok_ = new PushButton(theme, QStringLiteral("OK"), PushButton::Prominence::prominent, this);
    ok_->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(margin, 20, margin, 20);
    buttons->setSpacing(8);
    buttons->addStretch(1);
    buttons->addWidget(cancel_);
    buttons->addWidget(ok_);

    auto *stack = new QVBoxLayout(content);
    stack->setContentsMargins(margin, 20, margin - SlimScrollBar::breadth, 0);
    stack->setSpacing(0);
    stack->addWidget(heading);
    stack->addSpacing(16);
    stack->addWidget(titleLabel);
    stack->addSpacing(6);
    stack->addWidget(title_);
    stack->addSpacing(16);
    stack->addWidget(templateLabel);
    stack->addSpacing(6);
    stack->addWidget(promptTemplate_, 1);
    stack->addSpacing(6);
    stack->addWidget(hintLabel);

    auto *frame = new QVBoxLayout(this);
    frame->setContentsMargins(0, 0, 0, 0);
    frame->setSpacing(0);
    frame->addWidget(region, 1);
    frame->addLayout(buttons);
    frame->setSizeConstraint(QLayout::SetNoConstraint);
    fit(stack->totalHeightForWidth(sheetWidth - SlimScrollBar::breadth) +
        buttons->totalSizeHint().height());
}

void ActionEditorSheet::fit(int height) {
    // On a low screen the template gives way first, then everything above the buttons scrolls.
    promptTemplate_->setMinimumHeight(
        templateLinesAtLeast * promptTemplate_->fontMetrics().lineSpacing() + templatePadding);
    promptTemplate_->setMaximumHeight(QWIDGETSIZE_MAX);
    promptTemplate_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QScreen &screen = *(parentWidget() ? parentWidget() : this)->screen();
    const QSize wanted(sheetWidth, height);
    setFixedSize(wanted.boundedTo(roomOnScreen(*this, screen)));
    // One that fills the screen must stand in its middle; others stand over their window.
    if (size() != wanted)
        centreOnScreen(*this, screen, wanted);
}

void ActionEditorSheet::updateOk() {
    ok_->setEnabled(!trimmed(title_->text()).isEmpty() &&
                    !trimmed(promptTemplate_->exactText()).isEmpty());
}

void ActionEditorSheet::save() {
    onSave_(trimmed(title_->text()), trimmed(promptTemplate_->exactText()));
}

bool ActionEditorSheet::isEdited() const {
    return title_->text() != editor_.initialTitle() ||
           promptTemplate_->exactText() != editor_.initialTemplate();
}

void ActionEditorSheet::keyPressEvent(QKeyEvent *event) {
    // Escape is pressed for many a reason. What was typed goes only by a button that says so.
    if (event->matches(QKeySequence::Cancel) && isEdited())
        event->accept();
    else
        QDialog::keyPressEvent(event);
}

void ActionEditorSheet::reject() {
    onCancel_();
}

} // namespace quillmender
