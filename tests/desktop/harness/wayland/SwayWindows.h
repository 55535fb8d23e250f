#pragma once

#include "desktop/harness/WindowList.h"
#include "desktop/harness/wayland/SwayIpc.h"

#include <QJsonObject>

namespace quillmender::harness {

/// The windows of a sway, by its numbers of them.
class SwayWindows : public WindowList {
  public:
    explicit SwayWindows(SwayIpc ipc) : ipc_(std::move(ipc)) {}

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
    QList<QJsonObject> nodes() const;
    QJsonObject node(WindowId window) const;

    SwayIpc ipc_;
};

} // namespace quillmender::harness
