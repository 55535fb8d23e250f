#pragma once

#include "ui/Button.h"
#include "ui/style/Look.h"

namespace quillmender {

/// A plain captioned button.
class PushButton : public Button {
    Q_OBJECT

  public:
    enum class Prominence { standard, prominent, destructive };

    PushButton(Theme &theme, const QString &caption, Prominence prominence,
               QWidget *parent = nullptr);

    /// A quiet one is a caption alone until it is pointed at.
    void setQuiet(bool quiet);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    /// What destroys something needs a press of its own: the second half of a double click could
    /// hit what has moved into its place.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    QString unreadablePart() const override;

  private:
    Part part() const;

    Prominence prominence_;
    bool quiet_ = false;
};

} // namespace quillmender
