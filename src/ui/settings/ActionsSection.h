#pragma once

#include "model/ActionListItem.h"
#include "settings/SettingsStore.h"
#include "ui/FormSection.h"

#include <QList>

class QVBoxLayout;

namespace quillmender {

class ActionList;
class ActionRow;
class PushButton;
class TextLabel;

/// The list of actions. Rows are reused: only what has changed is shown anew. A button that changes
/// the list hands the focus to the row in its place, or the next press would hit another action.
class ActionsSection : public FormSection {
    Q_OBJECT

  public:
    ActionsSection(SettingsStore &store, Theme &theme, QWidget *parent = nullptr);

    void render() override;

  Q_SIGNALS:
    void editRequested(const ActionListItem &item);
    void newActionRequested();

  private:
    ActionRow *makeRow();
    void remove(const ActionListItem &item);
    void restore();
    void rest(qsizetype row);
    bool isResting() const;

    SettingsStore &store_;
    TextLabel *noActions_;
    ActionList *list_;
    QVBoxLayout *rows_;
    QList<ActionRow *> actionRows_; ///< the first `count_` are shown
    qsizetype count_ = 0;
    PushButton *newAction_;
    PushButton *restore_;
};

} // namespace quillmender
