#include "unit/platform/wayland/TestSeat.h"

#include <wayland-server-protocol.h>
#include <wayland-server.h>

namespace quillmender {

struct TestSeat::Requests {
    static TestSeat &of(wl_resource *resource) {
        return *static_cast<TestSeat *>(wl_resource_get_user_data(resource));
    }
    static void release(wl_client *, wl_resource *resource) { wl_resource_destroy(resource); }
    static void nothing(wl_client *, wl_resource *, uint32_t) {}

    static void getKeyboard(wl_client *client, wl_resource *seat, uint32_t id) {
        static const struct wl_keyboard_interface keyboard{release};
        wl_resource *const made =
            wl_resource_create(client, &wl_keyboard_interface, wl_resource_get_version(seat), id);
        wl_resource_set_implementation(made, &keyboard, nullptr, nullptr);
        of(seat).keyboard_ = made;
    }
    static void bindSeat(wl_client *client, void *self, uint32_t version, uint32_t id) {
        static const struct wl_seat_interface seat{nothing, getKeyboard, nothing, release};
        wl_resource *const made =
            wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
        wl_resource_set_implementation(made, &seat, self, nullptr);
        wl_seat_send_capabilities(made, WL_SEAT_CAPABILITY_KEYBOARD);
    }
    static void createSurface(wl_client *client, wl_resource *compositor, uint32_t id) {
        of(compositor).surface_ = wl_resource_create(client, &wl_surface_interface, 1, id);
    }
    static void bindCompositor(wl_client *client, void *self, uint32_t version, uint32_t id) {
        // Newer versions of the interface have more requests.
        static const auto compositor = [] {
            struct wl_compositor_interface requests{};
            requests.create_surface = createSurface;
            requests.create_region = nothing;
            return requests;
        }();
        wl_resource *const made =
            wl_resource_create(client, &wl_compositor_interface, static_cast<int>(version), id);
        wl_resource_set_implementation(made, &compositor, self, nullptr);
    }
};

TestSeat::TestSeat(TestCompositor &compositor) : compositor_(compositor) {
    compositor_.run([this](wl_display *display) {
        wl_global_create(display, &wl_seat_interface, 5, this, Requests::bindSeat);
        wl_global_create(display, &wl_compositor_interface, 1, this, Requests::bindCompositor);
    });
}

void TestSeat::enter(quint32 modifiers) {
    enterSilently();
    tellModifiers(modifiers, 0, 0, 0);
}

void TestSeat::enterSilently() {
    compositor_.run([this](wl_display *display) {
        wl_array keys;
        wl_array_init(&keys);
        wl_keyboard_send_enter(keyboard_, wl_display_next_serial(display), surface_, &keys);
        wl_array_release(&keys);
    });
}

void TestSeat::tellModifiers(quint32 depressed, quint32 latched, quint32 locked, quint32 layout) {
    compositor_.run([&](wl_display *display) {
        wl_keyboard_send_modifiers(keyboard_, wl_display_next_serial(display), depressed, latched,
                                   locked, layout);
    });
}

void TestSeat::leave() {
    compositor_.run([this](wl_display *display) {
        wl_keyboard_send_leave(keyboard_, wl_display_next_serial(display), surface_);
    });
}

} // namespace quillmender
