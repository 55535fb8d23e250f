#pragma once

#include <QList>
#include <QRect>
#include <QString>

namespace quillmender::harness {

/// A window of some program while it exists; 0 is none.
using WindowId = quint32;

/// What a desktop tells of the programs' windows, in the same words whatever it is.
class WindowList {
  public:
    virtual ~WindowList() = default;

    /// In the order in which they appeared.
    virtual QList<WindowId> all() const = 0;
    /// 0 when no window is active.
    virtual WindowId active() const = 0;
    virtual QString title(WindowId window) const = 0;
    /// 0 where the desktop does not tell.
    virtual qint64 processId(WindowId window) const = 0;
    /// False for one that is hidden or gone.
    virtual bool isViewable(WindowId window) const = 0;
    /// What the program draws, in pixels of the screen: without the frame that the desktop gives
    /// it, with a shadow that is the program's own. Empty where the desktop does not tell.
    virtual QRect geometry(WindowId window) const = 0;

    /// The newest shown window with exactly this title; 0 when there is none.
    virtual WindowId titled(const QString &title) const = 0;
    /// The newest shown window of the process, which is none of those that were there `before` it
    /// was started; 0 when it has none.
    virtual WindowId openedBy(qint64 processId, const QList<WindowId> &before) const = 0;

    /// Asks for the focus, as a task bar would, and waits until the window is active.
    virtual void activate(WindowId window) = 0;
    /// Asks the window to close, as its title bar's button does.
    virtual void close(WindowId window) = 0;
};

} // namespace quillmender::harness
