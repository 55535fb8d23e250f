#include "platform/linux/wayland/kwin/PlasmaToplevels.h"

#include "platform/ApplicationId.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/kwin/PlasmaWindow.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace quillmender::kwin {

namespace {

constexpr quint32 lowestVersion = 13; // windows are announced by an id that is never used again
constexpr quint32 highestVersion = 16;

} // namespace

struct PlasmaToplevels::Events {
    using Management = org_kde_plasma_window_management;

    static void windowWithId(void *self, Management *, uint32_t, const char *id) {
        static_cast<PlasmaToplevels *>(self)->introduce(id);
    }
    static void ignoreNumber(void *, Management *, uint32_t) {}
    static void ignoreNumbers(void *, Management *, wl_array *) {}
    static void ignoreText(void *, Management *, const char *) {}

    static constexpr org_kde_plasma_window_management_listener listener{
        .show_desktop_changed = ignoreNumber,
        .window = ignoreNumber,
        .stacking_order_changed = ignoreNumbers,
        .stacking_order_uuid_changed = ignoreText,
        .window_with_uuid = windowWithId,
    };
};

std::unique_ptr<PlasmaToplevels> PlasmaToplevels::create(wayland::WaylandConnection &connection) {
    if (connection.offeredVersion(org_kde_plasma_window_management_interface) < lowestVersion)
        return nullptr;
    return std::unique_ptr<PlasmaToplevels>(new PlasmaToplevels(connection));
}

PlasmaToplevels::PlasmaToplevels(wayland::WaylandConnection &connection)
    : connection_(connection),
      management_(connection.bind<org_kde_plasma_window_management>(
          org_kde_plasma_window_management_interface, highestVersion)) {
    org_kde_plasma_window_management_add_listener(management_.get(), &Events::listener, this);
    connect(&connection_, &wayland::WaylandConnection::lost, this, &PlasmaToplevels::forgetAll);
}

PlasmaToplevels::~PlasmaToplevels() = default;

void PlasmaToplevels::introduce(const char *id) {
    // A window that is announced again is the same one.
    if (find(id))
        return;
    windows_.push_back(std::make_unique<PlasmaWindow>(
        management_.get(), id,
        PlasmaWindow::Listeners{[this](PlasmaWindow *window) { handleChange(window); },
                                [this](PlasmaWindow *window) { remove(window); }}));
}

void PlasmaToplevels::handleChange(PlasmaWindow *window) {
    if (isForeign(*window) && window->isActive())
        last_ = window;
    else if (window == last_ && (!isForeign(*window) || window->isMinimized()))
        last_ = nullptr;
    Q_EMIT changed();
}

void PlasmaToplevels::remove(PlasmaWindow *window) {
    const bool wasIntroduced = window->isIntroduced();
    if (window == last_)
        last_ = nullptr;
    std::erase_if(windows_, [window](const auto &known) { return known.get() == window; });
    if (wasIntroduced)
        Q_EMIT changed();
}

void PlasmaToplevels::forgetAll() {
    last_ = nullptr;
    windows_.clear();
    Q_EMIT changed();
}

PlasmaWindow *PlasmaToplevels::find(const QByteArray &id) const {
    const auto found = std::ranges::find_if(
        windows_, [&id](const auto &known) { return known->description().id == id; });
    return found == windows_.end() ? nullptr : found->get();
}

bool PlasmaToplevels::isForeign(const PlasmaWindow &window) const {
    const wayland::Toplevel &description = window.description();
    if (description.processId == 0)
        return description.appId != QLatin1String(applicationId);
    return description.processId != QCoreApplication::applicationPid();
}

std::optional<wayland::Toplevel> PlasmaToplevels::active() const {
    return last_ ? std::optional(last_->description()) : std::nullopt;
}

bool PlasmaToplevels::hasKeyboard(const QByteArray &id) const {
    const PlasmaWindow *const window = find(id);
    return window && window->isIntroduced() && isForeign(*window) && window->isActive();
}

bool PlasmaToplevels::activate(const QByteArray &id) {
    PlasmaWindow *const window = find(id);
    if (!window || connection_.isLost())
        return false;
    window->activate();
    connection_.flush();
    return true;
}

} // namespace quillmender::kwin
