#pragma once

#include "ui/Theme.h"

#include <QLineEdit>

namespace quillmender {

/// A rounded one-line field. `edited` tells each change by the user.
class TextField : public QLineEdit {
    Q_OBJECT

  public:
    explicit TextField(Theme &theme, QWidget *parent = nullptr);

    /// Shows the model's text, unless it is what the user has just typed: cursor and undo history
    /// then stay as they are.
    void render(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void edited(const QString &text);

  protected:
    void focusInEvent(QFocusEvent *event) override;

  private:
    QString known_;
    bool rendering_ = false;
};

} // namespace quillmender
