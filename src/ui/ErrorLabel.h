#pragma once

#include "ui/TextLabel.h"

namespace quillmender {

/// What went wrong, in a few lines; the tool tip and the accessible name have all of it. It can be
/// selected and copied with the mouse and the keyboard. What is cut off is copied with the end of
/// what can be seen.
class ErrorLabel : public TextLabel {
    Q_OBJECT

  public:
    ErrorLabel(Theme &theme, QWidget *parent = nullptr);

    /// Selects nothing when the message is another one.
    void show(const QString &message);

    QString selectedText() const;

  protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    int positionAt(QPointF point) const;
    void select(int anchor, int position);
    void selectAll();
    /// The selection, or all of the message where nothing is selected.
    void copy() const;

    int anchor_ = 0;
    int position_ = 0;
};

} // namespace quillmender
