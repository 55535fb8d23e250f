#pragma once

#include "ui/Theme.h"

#include <QScrollArea>

namespace quillmender {

/// The part of a window that scrolls when it is too tall. A hairline at an edge says that there is
/// more beyond it.
class ScrollRegion : public QScrollArea {
    Q_OBJECT

  public:
    ScrollRegion(Theme &theme, QWidget *content, QWidget *parent = nullptr);

    /// Scrolls no more than needed to show the descendant, its beginning if it is too tall.
    void reveal(const QWidget *descendant);

    QSize sizeHint() const override;

  protected:
    bool viewportEvent(QEvent *event) override;

  private:
    QWidget *topEdge_;
    QWidget *bottomEdge_;
    void placeEdges();
};

} // namespace quillmender
