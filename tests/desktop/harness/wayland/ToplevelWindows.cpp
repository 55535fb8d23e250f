#include "desktop/harness/wayland/ToplevelWindows.h"

#include "desktop/harness/HarnessError.h"
#include "wlr-foreign-toplevel-management-unstable-v1-client-protocol.h"

#include <algorithm>
#include <span>

namespace quillmender::harness {

struct ToplevelWindows::Events {
    using Handle = zwlr_foreign_toplevel_handle_v1;
    using Manager = zwlr_foreign_toplevel_manager_v1;

    static Toplevel &of(void *toplevel) { return *static_cast<Toplevel *>(toplevel); }

    static void appear(void *self, Manager * /*manager*/, Handle *handle) {
        auto *windows = static_cast<ToplevelWindows *>(self);
        Toplevel &toplevel = windows->toplevels_[++windows->newest_];
        toplevel.handle.reset(handle);
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &events, &toplevel);
    }
    static void finish(void * /*self*/, Manager * /*manager*/) {}

    static void setTitle(void *toplevel, Handle * /*handle*/, const char *title) {
        of(toplevel).title = QString::fromUtf8(title);
    }
    static void setAppId(void *toplevel, Handle * /*handle*/, const char *appId) {
        of(toplevel).appId = QString::fromUtf8(appId);
    }
    static void ignoreOutput(void * /*toplevel*/, Handle * /*handle*/, wl_output * /*output*/) {}
    static void setState(void *toplevel, Handle * /*handle*/, wl_array *states) {
        const std::span all(static_cast<const quint32 *>(states->data),
                            states->size / sizeof(quint32));
        of(toplevel).isActive =
            std::find(all.begin(), all.end(),
                      quint32{ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED}) != all.end();
    }
    static void ignoreDone(void * /*toplevel*/, Handle * /*handle*/) {}
    static void close(void *toplevel, Handle * /*handle*/) { of(toplevel).isClosed = true; }
    static void ignoreParent(void * /*toplevel*/, Handle * /*handle*/, Handle * /*parent*/) {}

    static constexpr zwlr_foreign_toplevel_handle_v1_listener events{
        &setTitle, &setAppId,   &ignoreOutput, &ignoreOutput,
        &setState, &ignoreDone, &close,        &ignoreParent};
    static constexpr zwlr_foreign_toplevel_manager_v1_listener managerEvents{&appear, &finish};
};

ToplevelWindows::ToplevelWindows(const QString &socketPath)
    : client_(socketPath),
      manager_(client_.bind<zwlr_foreign_toplevel_manager_v1>(
          zwlr_foreign_toplevel_manager_v1_interface, 3)) {
    zwlr_foreign_toplevel_manager_v1_add_listener(manager_.get(), &Events::managerEvents, this);
}

ToplevelWindows::~ToplevelWindows() = default;

const std::map<WindowId, ToplevelWindows::Toplevel> &ToplevelWindows::now() const {
    // The first answers tell of windows, the second of what they are.
    client_.roundTrip();
    client_.roundTrip();
    std::erase_if(toplevels_, [](const auto &entry) { return entry.second.isClosed; });
    return toplevels_;
}

const ToplevelWindows::Toplevel *ToplevelWindows::find(WindowId window) const {
    const auto found = now().find(window);
    return found == toplevels_.end() ? nullptr : &found->second;
}

QList<WindowId> ToplevelWindows::all() const {
    QList<WindowId> windows;
    for (const auto &[id, toplevel] : now())
        windows.append(id);
    return windows;
}

WindowId ToplevelWindows::active() const {
    for (const auto &[id, toplevel] : now()) {
        if (toplevel.isActive)
            return id;
    }
    return 0;
}

QString ToplevelWindows::title(WindowId window) const {
    const Toplevel *toplevel = find(window);
    return toplevel == nullptr ? QString() : toplevel->title;
}

qint64 ToplevelWindows::processId(WindowId /*window*/) const {
    return 0;
}

bool ToplevelWindows::isViewable(WindowId window) const {
    return find(window) != nullptr;
}

QString ToplevelWindows::appId(WindowId window) const {
    const Toplevel *toplevel = find(window);
    return toplevel == nullptr ? QString() : toplevel->appId;
}

QRect ToplevelWindows::geometry(WindowId /*window*/) const {
    return {};
}

WindowId ToplevelWindows::titled(const QString &title) const {
    WindowId newest = 0;
    for (const auto &[id, toplevel] : now()) {
        if (toplevel.title == title)
            newest = id;
    }
    return newest;
}

WindowId ToplevelWindows::openedBy(qint64 /*processId*/, const QList<WindowId> &before) const {
    const QList<WindowId> windows = all();
    const auto newest = std::find_if(windows.crbegin(), windows.crend(),
                                     [&](WindowId window) { return !before.contains(window); });
    return newest == windows.crend() ? 0 : *newest;
}

void ToplevelWindows::activate(WindowId window) {
    const Toplevel *toplevel = find(window);
    if (toplevel == nullptr)
        throw HarnessError(QStringLiteral("the window to be activated is gone"));
    zwlr_foreign_toplevel_handle_v1_activate(toplevel->handle.get(), client_.seat());
    waitUntil([&] { return active() == window; }, QStringLiteral("the window is active"));
}

void ToplevelWindows::close(WindowId window) {
    const Toplevel *toplevel = find(window);
    if (toplevel == nullptr)
        return;
    zwlr_foreign_toplevel_handle_v1_close(toplevel->handle.get());
    client_.roundTrip();
}

} // namespace quillmender::harness
