#pragma once

#include "ui/Theme.h"

#include <QVBoxLayout>
#include <QWidget>

namespace quillmender {

/// A rounded surface that holds a vertical stack.
class Card : public QWidget {
    Q_OBJECT

  public:
    explicit Card(Theme &theme, QWidget *parent = nullptr);

    QVBoxLayout *stack() const { return stack_; }

    /// The room above and beneath what it holds, at first that of a card of texts.
    void setPadding(int top, int bottom);

  protected:
    void paintEvent(QPaintEvent *event) override;

    Theme &theme_;

  private:
    QVBoxLayout *stack_;
};

} // namespace quillmender
