#pragma once

#include "ui/AccessibleUpdates.h"

#include <QList>
#include <QPointer>
#include <QTimer>

#include <chrono>

class QWidget;

namespace quillmender {

/// Has assistive technology told of a window that appears when it is on the screen, not while it is
/// on its way there: the toolkit tells of each control, and everybody who takes that up takes time
/// from the window manager and the compositor. What is held back is told in the order in which it
/// came, at the latest a quarter of a second after.
class LateAppearance : public QObject, public AccessibleUpdateFilter {
    Q_OBJECT

  public:
    /// The window outlives it. What was held back is announced by that function; when the window
    /// does not come, after the longest time.
    explicit LateAppearance(QWidget &window,
                            QAccessible::UpdateHandler announce = QAccessible::updateAccessibility,
                            std::chrono::milliseconds longest = std::chrono::milliseconds(250));

    /// Before the window is shown.
    void begin();

    bool holdsBack(const QAccessibleEvent &event) override;

  protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    struct Update {
        QPointer<QObject> object;
        QAccessible::Event type;
        QAccessible::State changed;
    };

    void end();

    QWidget &window_;
    QAccessible::UpdateHandler announce_;
    std::chrono::milliseconds longest_;
    bool isAppearing_ = false;
    QList<Update> updates_;
    QTimer limit_;
};

} // namespace quillmender
