#pragma once

#include "desktop/harness/WindowList.h"
#include "desktop/harness/gnome/ShellEyes.h"

namespace quillmender::harness {

/// The windows of a GNOME Shell, in the order in which they appeared.
class GnomeWindows : public WindowList {
  public:
    explicit GnomeWindows(ShellEyes eyes) : eyes_(std::move(eyes)) {}

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

    QString appId(WindowId window) const;

  private:
    QList<QJsonObject> list() const;
    QJsonObject find(WindowId window) const;

    ShellEyes eyes_;
};

} // namespace quillmender::harness
