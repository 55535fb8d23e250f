#pragma once

#include "ui/Theme.h"

#include <QScrollArea>

#include <memory>

namespace quillmender {

class FocusFollower;

/// The part of a window that scrolls when it is too tall, and that follows the keyboard focus. A
/// hairline at an edge says that there is more beyond it.
class ScrollRegion : public QScrollArea {
    Q_OBJECT

  public:
    ScrollRegion(Theme &theme, QWidget *content, QWidget *parent = nullptr);
    ~ScrollRegion() override;

    /// Scrolls no more than needed to show the descendant, its beginning if it is too tall.
    void reveal(const QWidget *descendant);

    /// Whether all of the descendant can be seen, once everything has its place.
    bool shows(const QWidget *descendant) const;

    /// Shows the top although the control has the focus, or gets it now. The first key that it gets
    /// brings it into view.
    void showTop(QWidget *focus);

    QSize sizeHint() const override;

  protected:
    bool viewportEvent(QEvent *event) override;

  private:
    std::unique_ptr<FocusFollower> follower_;
    QWidget *topEdge_;
    QWidget *bottomEdge_;
    void placeEdges();
};

} // namespace quillmender
