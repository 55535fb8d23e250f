#include "ui/SettingsView.h"

#include "model/ActionListItem.h"
#include "ui/Accessibles.h"
#include "ui/ActionEditorSheet.h"
#include "ui/FormRow.h"
#include "ui/PushButton.h"
#include "ui/QueuedRender.h"
#include "ui/ScrollRegion.h"
#include "ui/SlimScrollBar.h"
#include "ui/TextLabel.h"
#include "ui/settings/ActionsSection.h"
#include "ui/settings/CredentialsSection.h"
#include "ui/settings/IntroductionSection.h"
#include "ui/settings/PermissionsSection.h"
#include "ui/settings/ProviderSection.h"
#include "ui/settings/SecuritySection.h"
#include "ui/settings/ShortcutSection.h"
#include "ui/settings/StartupSection.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QShowEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int margin = 24;
constexpr int sectionGap = 20;
} // namespace

SettingsView::SettingsView(SettingsStore &store, PermissionManager &permissionManager,
                           std::function<void()> onClose, Theme &theme, MissingCapabilities missing,
                           QWidget *parent)
    : QWidget(parent),
      store_(store),
      permissionManager_(permissionManager),
      onClose_(std::move(onClose)),
      theme_(theme),
      missing_(std::move(missing)) {
    installAccessibles();
    auto *stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(0);
    buildHeader(stack);
    buildForm(stack);
    const auto *later = new QueuedRender(*this, [this] { render(); });
    connect(&store, &Observable::objectWillChange, later, &QueuedRender::request);
    connect(&permissionManager, &Observable::objectWillChange, later, &QueuedRender::request);
}

void SettingsView::buildHeader(QVBoxLayout *stack) {
    auto *title = new TextLabel(theme_, TextStyle::title, TextLabel::Tone::primary, this);
    title->show(QStringLiteral("Settings"));
    auto *subtitle =
        new TextLabel(theme_, TextStyle::subheadline, TextLabel::Tone::secondary, this);
    subtitle->show(QStringLiteral("Configure your provider, API key, and actions."));
    auto *close =
        new PushButton(theme_, QStringLiteral("Close"), PushButton::Prominence::standard, this);
    connect(close, &QPushButton::clicked, this, [this] { onClose_(); });
    auto *texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(title);
    texts->addWidget(subtitle);
    auto *header = new QHBoxLayout;
    header->setContentsMargins(margin, 20, margin, 16);
    header->addLayout(texts, 1);
    header->addWidget(close, 0, Qt::AlignTop);
    stack->addLayout(header);
}

void SettingsView::buildForm(QVBoxLayout *stack) {
    auto *form = new QWidget;
    // Tab goes through them in the order in which they are made.
    sections_ = {new IntroductionSection(theme_, form), new ProviderSection(store_, theme_, form),
                 new StartupSection(store_, theme_, form)};
    for (const AIProvider provider : allProviders) {
        credentials_.append(new CredentialsSection(provider, store_, theme_, form));
        sections_.append(credentials_.last());
    }
    sections_.append(
        {new SecuritySection(theme_, form),
         new ShortcutSection(store_, missing_.value(Capability::hotKeys), theme_, form),
         new PermissionsSection(permissionManager_, missing_, theme_, form)});
    auto *actions = new ActionsSection(store_, theme_, form);
    sections_.append(actions);
    connect(actions, &ActionsSection::editRequested, this, &SettingsView::edit);
    connect(actions, &ActionsSection::newActionRequested, this,
            [this] { setActionEditor(ActionEditorState::newAction()); });

    auto *column = new QVBoxLayout(form);
    column->setContentsMargins(margin, 1, margin - SlimScrollBar::breadth, margin);
    column->setSpacing(sectionGap);
    for (FormSection *section : sections_)
        column->addWidget(section);
    column->addStretch(1);
    alignLabels(*form);
    region_ = new ScrollRegion(theme_, form, this);
    // Where the keyboard is while no control has it: its keys scroll.
    region_->setFocusPolicy(Qt::ClickFocus);
    region_->setAccessibleName(QStringLiteral("Settings"));
    stack->addWidget(region_, 1);
}

void SettingsView::render() {
    for (FormSection *section : sections_)
        section->render();
    Q_EMIT rendered();
}

void SettingsView::resetFocus() {
    region_->verticalScrollBar()->setValue(0);
    region_->setFocus(Qt::ActiveWindowFocusReason);
}

void SettingsView::showEvent(QShowEvent *event) {
    if (!event->spontaneous()) {
        store_.loadAPIKeysIfNeeded();
        store_.refreshLaunchAtLoginState();
        render();
    }
    QWidget::showEvent(event);
}

void SettingsView::hideEvent(QHideEvent *event) {
    if (!event->spontaneous()) {
        setActionEditor(std::nullopt);
        for (CredentialsSection *section : credentials_)
            section->forgetKey();
    }
    QWidget::hideEvent(event);
}

void SettingsView::edit(const ActionListItem &item) {
    if (const auto *config = std::get_if<BuiltInActionConfig>(&item.record()))
        setActionEditor(ActionEditorState::builtIn(*config));
    else
        setActionEditor(ActionEditorState::custom(std::get<CustomAction>(item.record())));
}

void SettingsView::setActionEditor(std::optional<ActionEditorState> editor) {
    actionEditor_ = std::move(editor);
    if (sheet_) {
        sheet_->hide();
        sheet_->deleteLater();
        sheet_ = nullptr;
    }
    if (actionEditor_)
        presentSheet();
}

void SettingsView::presentSheet() {
    sheet_ = new ActionEditorSheet(
        theme_, *actionEditor_, [this] { setActionEditor(std::nullopt); },
        [this](const QString &title, const QString &prompt) {
            saveAction(*actionEditor_, title, prompt);
            setActionEditor(std::nullopt);
        },
        window());
    sheet_->open();
}

void SettingsView::saveAction(const ActionEditorState &editor, const QString &title,
                              const QString &prompt) {
    if (!editor.record()) {
        store_.addCustomAction(title, prompt);
    } else if (const auto *config = std::get_if<BuiltInActionConfig>(&*editor.record())) {
        store_.updateBuiltInAction({config->action, title, prompt, false});
    } else {
        QList<CustomAction> actions = store_.customActions();
        const auto found = std::ranges::find(actions, std::get<CustomAction>(*editor.record()).id,
                                             &CustomAction::id);
        if (found == actions.end())
            return;
        found->title = title;
        found->promptTemplate = prompt;
        store_.setCustomActions(actions);
    }
}

} // namespace quillmender
