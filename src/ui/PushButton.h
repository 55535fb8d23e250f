#pragma once

#include "ui/Button.h"

namespace quillmender {

/// A plain captioned button.
class PushButton : public Button {
    Q_OBJECT

  public:
    enum class Prominence { standard, prominent, destructive };

    PushButton(Theme &theme, const QString &caption, Prominence prominence,
               QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    /// What destroys something needs a press of its own: the second half of a double click could
    /// hit what has moved into its place.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    QString unreadablePart() const override;

  private:
    QColor fill() const;
    QColor captionColor() const;
    int captionWidth() const;

    Prominence prominence_;
};

} // namespace quillmender
