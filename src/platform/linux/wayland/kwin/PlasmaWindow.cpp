#include "platform/linux/wayland/kwin/PlasmaWindow.h"

#include <utility>

namespace quillmender::kwin {

struct PlasmaWindow::Events {
    using Window = org_kde_plasma_window;

    static PlasmaWindow &of(void *self) { return *static_cast<PlasmaWindow *>(self); }

    static void title(void *self, Window *, const char *title) {
        of(self).description_.title = QString::fromUtf8(title);
    }
    static void appId(void *self, Window *, const char *appId) {
        of(self).description_.appId = QString::fromUtf8(appId);
    }
    static void state(void *self, Window *, uint32_t state) { of(self).setState(state); }
    static void process(void *self, Window *, uint32_t process) {
        of(self).description_.processId = process;
        of(self).tellChange();
    }
    static void frame(void *self, Window *, int32_t x, int32_t y, uint32_t width, uint32_t height) {
        of(self).description_.frame =
            DesktopRect{x, y, static_cast<int>(width), static_cast<int>(height)};
    }
    static void introduced(void *self, Window *) {
        of(self).isIntroduced_ = true;
        of(self).tellChange();
    }
    static void unmapped(void *self, Window *) {
        const auto gone = of(self).listeners_.gone;
        gone(&of(self));
    }

    static void ignoreSign(void *, Window *) {}
    static void ignoreText(void *, Window *, const char *) {}
    static void ignoreNumber(void *, Window *, int32_t) {}
    static void ignoreParent(void *, Window *, Window *) {}
    static void ignoreMenu(void *, Window *, const char *, const char *) {}

    static constexpr org_kde_plasma_window_listener listener{
        .title_changed = title,
        .app_id_changed = appId,
        .state_changed = state,
        .virtual_desktop_changed = ignoreNumber,
        .themed_icon_name_changed = ignoreText,
        .unmapped = unmapped,
        .initial_state = introduced,
        .parent_window = ignoreParent,
        .geometry = frame,
        .icon_changed = ignoreSign,
        .pid_changed = process,
        .virtual_desktop_entered = ignoreText,
        .virtual_desktop_left = ignoreText,
        .application_menu = ignoreMenu,
        .activity_entered = ignoreText,
        .activity_left = ignoreText,
        .resource_name_changed = ignoreText,
    };
};

PlasmaWindow::PlasmaWindow(org_kde_plasma_window_management *management, const char *id,
                           Listeners listeners)
    : listeners_(std::move(listeners)),
      window_(org_kde_plasma_window_management_get_window_by_uuid(management, id)) {
    description_.id = id;
    org_kde_plasma_window_add_listener(window_.get(), &Events::listener, this);
}

void PlasmaWindow::setState(quint32 state) {
    constexpr quint32 used = active | minimized;
    const bool isNew = ((state ^ std::exchange(state_, state)) & used) != 0;
    if (isNew)
        tellChange();
}

void PlasmaWindow::tellChange() {
    if (isIntroduced_)
        listeners_.changed(this);
}

void PlasmaWindow::activate() {
    org_kde_plasma_window_set_state(window_.get(), active, active);
}

} // namespace quillmender::kwin
