#pragma once

#include "ui/Theme.h"

#include <QWidget>

class QScrollArea;

namespace quillmender {

/// Lies over the content of a scroll area that is nothing but text on the window's ground, and
/// covers the lines that are cut at its edges: whatever is scrolled to, every line is whole.
class WholeLines : public QWidget {
    Q_OBJECT

  public:
    WholeLines(Theme &theme, QScrollArea &area);

  protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    Theme &theme_;
    QScrollArea &area_;
};

} // namespace quillmender
