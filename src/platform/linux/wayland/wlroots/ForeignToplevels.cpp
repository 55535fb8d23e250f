#include "platform/linux/wayland/wlroots/ForeignToplevels.h"

#include "platform/linux/wayland/WaylandConnection.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace quillmender::wlroots {

using wayland::Toplevel;
using wayland::WaylandConnection;

namespace {

// A window that is active while a panel of ours has the keyboard gets it back after the panel has
// gone, and nobody says when. Seen to take 65 ms.
constexpr std::chrono::milliseconds focusReturns{100};

} // namespace

struct ForeignToplevels::Events {
    using Handle = zwlr_foreign_toplevel_handle_v1;

    static Window &window(void *data) { return *static_cast<Window *>(data); }

    static void announced(void *self, zwlr_foreign_toplevel_manager_v1 *, Handle *handle) {
        static_cast<ForeignToplevels *>(self)->add(handle);
    }
    static void finished(void *self, zwlr_foreign_toplevel_manager_v1 *) {
        auto &toplevels = *static_cast<ForeignToplevels *>(self);
        toplevels.manager_.reset();
        toplevels.forgetAll();
    }
    static void titled(void *data, Handle *, const char *title) {
        window(data).toplevel.title = QString::fromUtf8(title);
    }
    static void named(void *data, Handle *, const char *appId) {
        window(data).toplevel.appId = QString::fromUtf8(appId);
    }
    static void entered(void *data, Handle *, wl_output *output) {
        window(data).outputs.append(output);
    }
    static void left(void *data, Handle *, wl_output *output) {
        window(data).outputs.removeAll(output);
    }
    static void changed(void *data, Handle *, wl_array *states) {
        const auto *first = static_cast<const uint32_t *>(states->data);
        const auto *last = first + states->size / sizeof *first;
        const auto has = [&](uint32_t state) { return std::find(first, last, state) != last; };
        window(data).isNextActive = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
        window(data).isNextMinimized = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
    }
    static void told(void *data, Handle *) { window(data).owner->apply(window(data)); }
    static void closed(void *data, Handle *) { window(data).owner->remove(window(data)); }
    static void belongs(void *, Handle *, Handle *) {}

    static constexpr zwlr_foreign_toplevel_manager_v1_listener ofManager{announced, finished};
    static constexpr zwlr_foreign_toplevel_handle_v1_listener ofHandle{
        titled, named, entered, left, changed, told, closed, belongs};
};

std::unique_ptr<ForeignToplevels> ForeignToplevels::create(WaylandConnection &connection,
                                                           QString ownAppId) {
    constexpr quint32 highest = 3;
    auto manager = connection.bind<zwlr_foreign_toplevel_manager_v1>(
        zwlr_foreign_toplevel_manager_v1_interface, highest);
    if (!manager)
        return nullptr;
    return std::unique_ptr<ForeignToplevels>(
        new ForeignToplevels(connection, std::move(manager), std::move(ownAppId)));
}

ForeignToplevels::ForeignToplevels(WaylandConnection &connection,
                                   wayland::Proxy<zwlr_foreign_toplevel_manager_v1> manager,
                                   QString ownAppId)
    : connection_(connection),
      ownAppId_(std::move(ownAppId)),
      outputs_(connection.display()),
      manager_(std::move(manager)) {
    zwlr_foreign_toplevel_manager_v1_add_listener(manager_.get(), &Events::ofManager, this);
    connect(&connection_, &WaylandConnection::lost, this, &ForeignToplevels::forgetAll);
    whileFocusReturns_.setSingleShot(true);
    whileFocusReturns_.setInterval(focusReturns);
    connect(&whileFocusReturns_, &QTimer::timeout, this, &Toplevels::changed);
    if (auto *const toolkit = qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        connect(toolkit, &QGuiApplication::focusWindowChanged, this,
                &ForeignToplevels::noteOwnFocus);
}

ForeignToplevels::~ForeignToplevels() {
    if (manager_ && !connection_.isLost())
        zwlr_foreign_toplevel_manager_v1_stop(manager_.get());
}

std::optional<Toplevel> ForeignToplevels::active() const {
    const Window *const window = find(last_);
    if (!window || window->isMinimized)
        return std::nullopt;
    Toplevel toplevel = window->toplevel;
    if (!window->outputs.isEmpty())
        toplevel.output = outputs_.of(window->outputs.constLast());
    return toplevel;
}

bool ForeignToplevels::hasKeyboard(const QByteArray &id) const {
    const bool isOurs = QGuiApplication::focusWindow() != nullptr || whileFocusReturns_.isActive();
    const Window *const window = find(id);
    return window && window->isActive && !isOwn(*window) && !isOurs;
}

bool ForeignToplevels::activate(const QByteArray &id) {
    const Window *const window = find(id);
    if (!window || isOwn(*window) || !connection_.seat() || connection_.isLost())
        return false;
    zwlr_foreign_toplevel_handle_v1_activate(window->proxy.get(), connection_.seat());
    connection_.flush();
    return true;
}

bool ForeignToplevels::isAnyActive() const {
    return std::ranges::any_of(windows_, &Window::isActive);
}

void ForeignToplevels::noteOwnFocus(const QWindow *focused) {
    if (focused)
        whileFocusReturns_.stop();
    else
        whileFocusReturns_.start();
    Q_EMIT changed();
}

void ForeignToplevels::add(zwlr_foreign_toplevel_handle_v1 *handle) {
    Window &window = windows_.emplace_back();
    window.proxy.reset(handle);
    window.owner = this;
    window.toplevel.id = QByteArray::number(++count_);
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Events::ofHandle, &window);
}

void ForeignToplevels::apply(Window &window) {
    const bool becomesActive = window.isNextActive && !window.isActive;
    window.isActive = window.isNextActive;
    window.isMinimized = window.isNextMinimized;
    if (becomesActive)
        whileFocusReturns_.stop();
    if (becomesActive && !isOwn(window))
        last_ = window.toplevel.id;
    Q_EMIT changed();
}

void ForeignToplevels::remove(Window &window) {
    windows_.remove_if([&](const Window &one) { return &one == &window; });
    Q_EMIT changed();
}

void ForeignToplevels::forgetAll() {
    windows_.clear();
    last_.clear();
    Q_EMIT changed();
}

const ForeignToplevels::Window *ForeignToplevels::find(const QByteArray &id) const {
    const auto found =
        std::ranges::find_if(windows_, [&](const Window &one) { return one.toplevel.id == id; });
    return found == windows_.end() ? nullptr : &*found;
}

} // namespace quillmender::wlroots
