#pragma once

#include "desktop/harness/WindowList.h"
#include "desktop/harness/wayland/KWinScripting.h"

#include <QJsonObject>
#include <QStringList>

namespace quillmender::harness {

/// The windows of a KWin, as its scripts see them, those of layers included.
class KWinWindows : public WindowList {
  public:
    explicit KWinWindows(KWinScripting &scripting) : scripting_(scripting) {}

    QList<WindowId> all() const override;
    WindowId active() const override;
    QString title(WindowId window) const override;
    qint64 processId(WindowId window) const override;
    bool isViewable(WindowId window) const override;
    QRect geometry(WindowId window) const override;
    WindowId titled(const QString &title) const override;
    WindowId openedBy(qint64 processId, const QList<WindowId> &before) const override;
    void activate(WindowId window) override;
    void close(WindowId window) override;

    /// The name of its program's .desktop file.
    QString appId(WindowId window) const;

  private:
    QList<QJsonObject> list() const;
    QJsonObject find(WindowId window) const;
    WindowId idOf(const QJsonObject &window) const;
    void tell(WindowId window, const QString &order);

    KWinScripting &scripting_;
    mutable QStringList seen_; ///< KWin's names of windows; ours is the place in the list, from 1
};

} // namespace quillmender::harness
