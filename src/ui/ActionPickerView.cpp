#include "ui/ActionPickerView.h"

#include "ui/Accessibles.h"
#include "ui/ActionGrid.h"
#include "ui/ActionPickerModel.h"
#include "ui/ActionTile.h"
#include "ui/ErrorLabel.h"
#include "ui/InstructionEditor.h"
#include "ui/PreviewCard.h"
#include "ui/PromptCard.h"
#include "ui/PushButton.h"
#include "ui/QueuedRender.h"
#include "ui/ScrollRegion.h"
#include "ui/SlimScrollBar.h"
#include "ui/StatusLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QScrollBar>
#include <QVBoxLayout>

namespace quillmender {

namespace {
constexpr int margin = 24;
constexpr int sectionGap = 12;
constexpr int footerPadding = 8;
} // namespace

ActionPickerView::ActionPickerView(ActionPickerModel &model, Theme &theme,
                                   QList<GridColumn> columns, QWidget *parent)
    : QWidget(parent),
      model_(model),
      theme_(theme),
      speech_(model, *this) {
    installAccessibles();
    auto *stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(0);
    buildHeader(stack);
    buildBody(stack, std::move(columns));
    buildFooter(stack);
    connectControls();
    connect(&model, &Observable::objectWillChange, this, [this] { stale_ = true; });
    const auto *later = new QueuedRender(*this, [this] { renderNow(); });
    connect(&model, &Observable::objectWillChange, later, &QueuedRender::request);
}

void ActionPickerView::buildHeader(QVBoxLayout *stack) {
    auto *title = new TextLabel(theme_, TextStyle::title, TextLabel::Tone::primary, this);
    title->show(QStringLiteral("Quillmender"));
    subtitle_ = new StatusLabel(theme_, TextStyle::subheadline, TextLabel::Tone::secondary, this);
    setKeyboardWithheld(false);
    auto *header = new QVBoxLayout;
    // The lines of the title and the subtitle have air of their own.
    header->setContentsMargins(margin, 6, margin, 4);
    header->setSpacing(-4);
    header->addWidget(title);
    header->addWidget(subtitle_);
    stack->addLayout(header);
}

void ActionPickerView::buildBody(QVBoxLayout *stack, QList<GridColumn> columns) {
    auto *body = new QWidget;
    auto *sections = new QVBoxLayout(body);
    sections->setContentsMargins(margin, 1, margin - SlimScrollBar::breadth, margin / 2);
    sections->setSpacing(sectionGap);
    previewCard_ = new PreviewCard(theme_, body);
    grid_ = new ActionGrid(theme_, std::move(columns), body);
    grid_->setAccessibleName(QStringLiteral("Actions"));
    promptCard_ = new PromptCard(theme_, body);
    sections->addWidget(previewCard_);
    sections->addWidget(grid_);
    sections->addWidget(promptCard_);
    sections->addStretch(1);
    region_ = new ScrollRegion(theme_, body, this);
    stack->addWidget(region_, 1);
}

void ActionPickerView::buildFooter(QVBoxLayout *stack) {
    const auto standard = PushButton::Prominence::standard;
    captureAgain_ = new PushButton(theme_, QStringLiteral("Capture Again"), standard, this);
    settings_ = new PushButton(theme_, QStringLiteral("Settings"), standard, this);
    close_ = new PushButton(theme_, QStringLiteral("Close"), standard, this);
    auto *footer = new QHBoxLayout;
    footer->setContentsMargins(margin, footerPadding, margin, footerPadding);
    footer->setSpacing(8);
    footer->addWidget(captureAgain_);
    footer->addWidget(settings_);
    footer->addStretch(1);
    footer->addWidget(close_);
    stack->addLayout(footer);
}

void ActionPickerView::connectControls() {
    connect(grid_, &ActionGrid::tilesMade, this, &ActionPickerView::orderTabs);
    // What starts a run shows it at once: a second key that already waits must not start another.
    connect(grid_, &ActionGrid::picked, this, [this](const PromptAction &action) {
        model_.run(action);
        renderNow();
    });
    connect(previewCard_->accessButton(), &QPushButton::clicked, this,
            [this] { model_.requestAccessibilityAccess(); });
    connect(promptCard_->generateButton(), &QPushButton::clicked, this, [this] {
        model_.runCustomInstruction();
        renderNow();
    });
    connect(promptCard_->editor(), &InstructionEditor::edited, this, [this](const QString &text) {
        isStopgap_ = false;
        model_.setCustomInstruction(text);
    });
    connect(promptCard_->editor(), &QPlainTextEdit::cursorPositionChanged, this, [this] {
        if (promptCard_->editor()->hasFocus())
            region_->reveal(promptCard_);
    });
    connect(captureAgain_, &QPushButton::clicked, this, [this] { model_.beginWorkflow(); });
    connect(settings_, &QPushButton::clicked, this, [this] { model_.openSettings(); });
    connect(close_, &QPushButton::clicked, this, [this] { model_.hidePanel(); });
}

void ActionPickerView::orderTabs() {
    setTabOrder(previewCard_->error(), previewCard_->accessButton());
    QWidget *last = previewCard_->accessButton();
    for (ActionTile *tile : grid_->tiles()) {
        setTabOrder(last, tile);
        last = tile;
    }
    setTabOrder(last, promptCard_->editor());
}

void ActionPickerView::renderNow() {
    if (stale_)
        render();
}

void ActionPickerView::resetFocus() {
    isStopgap_ = false;
    QWidget *start = startingPoint();
    region_->showTop(start);
    // The instruction may be below the edge: what has the keyboard is seen.
    if (model_.isWorking() && start == editor())
        region_->reveal(start);
}

bool ActionPickerView::hasStopgapFocus() const {
    return isStopgap_ && window()->focusWidget() == editor();
}

void ActionPickerView::setKeyboardWithheld(bool isWithheld) {
    subtitle_->setTone(isWithheld ? TextLabel::Tone::error : TextLabel::Tone::secondary);
    subtitle_->show(isWithheld
                        ? QStringLiteral("The keyboard is still with another window. Click here to "
                                         "type, or use the mouse.")
                        : QStringLiteral("Transform the captured text and replace it in place."));
    if (isWithheld)
        subtitle_->repeat();
}

QWidget *ActionPickerView::startingPoint() const {
    const auto canBePressed = [this](const QWidget *control) {
        return control && control->isVisibleTo(this) && control->isEnabled();
    };
    if (ActionTile *first = grid_->tiles().value(0); canBePressed(first))
        return first;
    if (PushButton *access = previewCard_->accessButton(); canBePressed(access))
        return access;
    // While a request runs, what is typed is for the instruction.
    return model_.errorMessage() && !model_.isWorking() ? static_cast<QWidget *>(captureAgain_)
                                                        : editor();
}

InstructionEditor *ActionPickerView::editor() const {
    return promptCard_->editor();
}

void ActionPickerView::showEvent(QShowEvent *event) {
    renderNow();
    QWidget::showEvent(event);
}

void ActionPickerView::render() {
    stale_ = false;
    const QPointer focus = window()->focusWidget();
    const bool working = model_.isWorking();
    const bool failedWithoutText =
        model_.errorMessage().has_value() && model_.selectedTextPreview().isEmpty();
    previewCard_->render(model_);
    grid_->render(model_.actions(), !working && !failedWithoutText);
    promptCard_->render(model_);
    captureAgain_->setEnabled(!working);
    settings_->setEnabled(!working);
    keepFocus(focus);
    showNews();
    speech_.render();
    Q_EMIT rendered();
}

void ActionPickerView::keepFocus(QWidget *focus) {
    if (!focus || !isAncestorOf(focus) || !isVisible())
        return;
    // Whatever comes next in the order of tabs could be a button, which the next key would press.
    // In the instruction a key does no harm.
    if (focus->isHidden() || !focus->isVisible()) {
        isStopgap_ = true;
        region_->showTop(editor());
    }
    // The window was left and came back while the control was disabled, and could not give it the
    // focus then.
    else if (focus->isEnabled() && isActiveWindow() && window()->focusWidget() == focus)
        focus->setFocus(Qt::ActiveWindowFocusReason);
}

void ActionPickerView::showNews() {
    // Progress and error stand at the top.
    const bool isNews = model_.isWorking() != shownWorking_ ||
                        (model_.errorMessage() && model_.errorMessage() != shownError_);
    shownWorking_ = model_.isWorking();
    shownError_ = model_.errorMessage();
    if (isNews)
        region_->showTop(window()->focusWidget());
    if (isNews && model_.errorMessage() && !model_.isWorking() && isVisible())
        showError();
}

// What has the keyboard is seen, and so is what went wrong: where both do not fit, the error gets
// it. Somebody who writes an instruction goes on writing.
void ActionPickerView::showError() {
    if (!region_->shows(previewCard_->error()))
        region_->reveal(previewCard_->error());
    const QWidget *focus = window()->focusWidget();
    const bool isWriting = focus == editor() && !model_.customInstruction().isEmpty();
    if (focus && region_->isAncestorOf(focus) && !isWriting && !region_->shows(focus))
        previewCard_->error()->setFocus(Qt::OtherFocusReason);
}

} // namespace quillmender
