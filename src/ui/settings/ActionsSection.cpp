#include "ui/settings/ActionsSection.h"

#include "ui/PushButton.h"
#include "ui/TextLabel.h"
#include "ui/settings/ActionRow.h"

#include <QVBoxLayout>

namespace quillmender {

namespace {

ActionListItem listItem(const PromptAction &action) {
    return std::visit(
        [](const auto &record) {
            if constexpr (std::is_same_v<decltype(record), const BuiltInActionConfig &>)
                return ActionListItem::builtIn(record);
            else
                return ActionListItem::custom(record);
        },
        action.record());
}

} // namespace

ActionsSection::ActionsSection(SettingsStore &store, Theme &theme, QWidget *parent)
    : FormSection(theme, QStringLiteral("Actions"), parent),
      store_(store),
      noActions_(new TextLabel(theme, TextStyle::body, TextLabel::Tone::secondary, card())),
      list_(new QWidget(card())),
      rows_(new QVBoxLayout(list_)),
      newAction_(new PushButton(theme, QStringLiteral("New Action"),
                                PushButton::Prominence::standard, card())),
      restore_(new PushButton(theme, QStringLiteral("Restore Starter Actions"),
                              PushButton::Prominence::standard, card())) {
    addCaption(QStringLiteral("Every action becomes a button in the main picker. Use `{{text}}` "
                              "where the captured text should be inserted."));
    noActions_->show(QStringLiteral("No actions available."));
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(0);
    addRow(noActions_);
    addRow(list_);
    addButtons({newAction_, restore_});
    connect(newAction_, &QPushButton::clicked, this, &ActionsSection::newActionRequested);
    connect(restore_, &QPushButton::clicked, this, [this] { store_.restoreAllBuiltInActions(); });
}

ActionRow *ActionsSection::makeRow() {
    auto *row = new ActionRow(theme(), list_);
    rows_->addWidget(row);
    QWidget *last = actionRows_.isEmpty() ? nullptr : actionRows_.last()->removeButton();
    if (last)
        QWidget::setTabOrder(last, row->editButton());
    QWidget::setTabOrder(row->editButton(), row->removeButton());
    QWidget::setTabOrder(row->removeButton(), newAction_);
    QWidget::setTabOrder(newAction_, restore_);
    connect(row->editButton(), &QPushButton::clicked, this,
            [this, row] { Q_EMIT editRequested(row->item()); });
    connect(row->removeButton(), &QPushButton::clicked, this, [this, row] { remove(row->item()); });
    return row;
}

void ActionsSection::render() {
    const QList<PromptAction> actions = store_.visibleActions();
    while (actionRows_.size() < actions.size())
        actionRows_.append(makeRow());
    for (qsizetype i = 0; i < actions.size(); ++i) {
        actionRows_[i]->setItem(listItem(actions[i]));
        actionRows_[i]->setVisible(true);
    }
    for (qsizetype i = actions.size(); i < actionRows_.size(); ++i)
        actionRows_[i]->setVisible(false);
    noActions_->setVisible(actions.isEmpty());
    list_->setVisible(!actions.isEmpty());
    restore_->setVisible(!store_.hiddenBuiltInActionItems().isEmpty());
}

void ActionsSection::remove(const ActionListItem &item) {
    if (const auto *config = std::get_if<BuiltInActionConfig>(&item.record()))
        store_.hideBuiltInAction(config->action);
    else
        store_.removeCustomAction(std::get<CustomAction>(item.record()).id);
}

} // namespace quillmender
