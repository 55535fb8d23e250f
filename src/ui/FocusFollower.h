#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace quillmender {

class ScrollRegion;

/// Scrolls a region to the control that gets the keyboard focus, whoever gave it: a key, the mouse,
/// the program, an assistive tool. A window that becomes active again is left as it was.
class FocusFollower : public QObject {
    Q_OBJECT

  public:
    /// The region outlives it.
    explicit FocusFollower(ScrollRegion &region);

    /// This control has the focus or gets it next, and is followed only when it gets a key.
    void expect(QWidget *control);

    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    void focusCame(QWidget *control, Qt::FocusReason reason);
    void follow();

    ScrollRegion &region_;
    QPointer<QWidget> last_;       ///< of the region's window, the control that had the focus last
    bool waitsForRelease_ = false; ///< of the mouse button that gave the focus
    bool isDue_ = false;           ///< in the next turn of the event loop
};

} // namespace quillmender
