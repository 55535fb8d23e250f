#pragma once

#include "desktop/harness/WindowList.h"
#include "desktop/harness/wayland/WaylandClient.h"

#include <map>

struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace quillmender::harness {

/// The windows of a compositor by wlr-foreign-toplevel-management, which tells neither processes
/// nor places: the window that a process has opened is the newest that was not there before.
class ToplevelWindows : public WindowList {
  public:
    explicit ToplevelWindows(const QString &socketPath);
    ~ToplevelWindows() override;

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
    struct Toplevel {
        Held<zwlr_foreign_toplevel_handle_v1> handle;
        QString title;
        QString appId;
        bool isActive = false;
        bool isClosed = false;
    };
    struct Events;

    const std::map<WindowId, Toplevel> &now() const;
    const Toplevel *find(WindowId window) const;

    mutable WaylandClient client_;
    mutable std::map<WindowId, Toplevel> toplevels_;
    WindowId newest_ = 0;
    Held<zwlr_foreign_toplevel_manager_v1> manager_;
};

} // namespace quillmender::harness
