#include "ui/settings/ActionsSection.h"

#include "ui/PushButton.h"
#include "ui/TextLabel.h"
#include "ui/settings/ActionList.h"
#include "ui/settings/ActionRow.h"

#include <QVBoxLayout>

#include <algorithm>

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
      list_(new ActionList(card())),
      rows_(new QVBoxLayout(list_)),
      newAction_(new PushButton(theme, QStringLiteral("New Action"),
                                PushButton::Prominence::standard, card())),
      restore_(new PushButton(theme, QStringLiteral("Restore Starter Actions"),
                              PushButton::Prominence::standard, card())) {
    addCaption(QStringLiteral("Every action becomes a button in the main picker. Use `{{text}}` "
                              "where the captured text should be inserted."));
    noActions_->show(QStringLiteral("No actions available."));
    list_->setAccessibleName(QStringLiteral("Actions"));
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(0);
    addRow(noActions_);
    addRow(list_);
    addButtons({newAction_, restore_});
    connect(newAction_, &QPushButton::clicked, this, &ActionsSection::newActionRequested);
    connect(restore_, &QPushButton::clicked, this, &ActionsSection::restore);
}

ActionRow *ActionsSection::makeRow() {
    auto *row = new ActionRow(theme(), list_);
    rows_->addWidget(row);
    if (!actionRows_.isEmpty())
        QWidget::setTabOrder(actionRows_.last()->removeButton(), row);
    QWidget::setTabOrder(row, row->editButton());
    QWidget::setTabOrder(row->editButton(), row->removeButton());
    QWidget::setTabOrder(row->removeButton(), newAction_);
    QWidget::setTabOrder(newAction_, restore_);
    connect(row->editButton(), &QPushButton::clicked, this,
            [this, row] { Q_EMIT editRequested(row->item()); });
    connect(row->removeButton(), &QPushButton::clicked, this, [this, row] {
        // Before the next action moves up beneath the key that is pressed once more.
        if (const QWidget *focus = window()->focusWidget(); focus && list_->isAncestorOf(focus))
            rest(actionRows_.indexOf(row));
        remove(row->item());
    });
    return row;
}

void ActionsSection::render() {
    const QList<PromptAction> actions = store_.visibleActions();
    const bool wasResting = isResting();
    while (actionRows_.size() < actions.size())
        actionRows_.append(makeRow());
    count_ = actions.size();
    for (qsizetype i = 0; i < count_; ++i) {
        actionRows_[i]->setItem(listItem(actions[i]));
        actionRows_[i]->setVisible(true);
    }
    // What has the focus is not hidden before it has handed it on: the toolkit would choose a
    // button.
    QWidget *const shown = count_ > 0 ? list_ : static_cast<QWidget *>(noActions_);
    QWidget *const hidden = count_ > 0 ? static_cast<QWidget *>(noActions_) : list_;
    shown->setVisible(true);
    if (wasResting && !isResting())
        rest(count_ - 1);
    hidden->setVisible(false);
    for (qsizetype i = count_; i < actionRows_.size(); ++i)
        actionRows_[i]->setVisible(false);
    restore_->setVisible(!store_.hiddenBuiltInActionItems().isEmpty());
}

bool ActionsSection::isResting() const {
    const QWidget *focus = window()->focusWidget();
    if (count_ == 0)
        return focus == noActions_;
    return std::any_of(actionRows_.begin(), actionRows_.begin() + count_,
                       [focus](const QWidget *row) { return row == focus; });
}

void ActionsSection::rest(qsizetype row) {
    QWidget *place =
        count_ > 0 ? static_cast<QWidget *>(actionRows_[std::min(row, count_ - 1)]) : noActions_;
    place->setFocus(Qt::OtherFocusReason);
}

void ActionsSection::restore() {
    if (window()->focusWidget() == restore_)
        rest(count_ - 1);
    store_.restoreAllBuiltInActions();
}

void ActionsSection::remove(const ActionListItem &item) {
    if (const auto *config = std::get_if<BuiltInActionConfig>(&item.record()))
        store_.hideBuiltInAction(config->action);
    else
        store_.removeCustomAction(std::get<CustomAction>(item.record()).id);
}

} // namespace quillmender
