#pragma once

#include "model/ActionListItem.h"
#include "ui/Theme.h"

#include <QWidget>

#include <optional>

namespace quillmender {

class PushButton;
class SymbolView;
class TextLabel;

/// One action in the list of the settings. Its buttons are quiet until it is pointed at or has the
/// keyboard. The row can have the keyboard focus itself: a place in
/// the list where no key does anything but go on.
class ActionRow : public QWidget {
    Q_OBJECT

  public:
    explicit ActionRow(Theme &theme, QWidget *parent = nullptr);

    const ActionListItem &item() const { return *item_; }
    void setItem(const ActionListItem &item);

    PushButton *editButton() const { return edit_; }
    PushButton *removeButton() const { return remove_; }

  protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    void quieten();

    Theme &theme_;
    std::optional<ActionListItem> item_;
    SymbolView *symbol_;
    TextLabel *title_;
    TextLabel *caption_;
    PushButton *edit_;
    PushButton *remove_;
};

} // namespace quillmender
