#include "platform/linux/wayland/own/KeyboardWatch.h"

#include "unit/platform/wayland/TestSeat.h"

#include <gtest/gtest.h>

#include <wayland-client.h>

namespace quillmender::wayland {

TEST(KeyboardWatchTest, AwaitsWhatTheCompositorHasNotSaidOfAKeyboard) {
    TestCompositor compositor;
    const TestSeat seat(compositor);
    wl_display *const display = wl_display_connect(compositor.name().constData());
    {
        const KeyboardWatch keyboard(display);
        wl_display_roundtrip(display);
        EXPECT_TRUE(keyboard.isAwaited()) << "there is a seat";
        EXPECT_FALSE(keyboard.isAny());
        wl_display_roundtrip(display);
        EXPECT_TRUE(keyboard.isAwaited()) << "it has a keyboard";
        EXPECT_TRUE(keyboard.isAny());
        wl_display_roundtrip(display);
        EXPECT_FALSE(keyboard.isAwaited());
        EXPECT_TRUE(keyboard.isAny());
    }
    wl_display_disconnect(display);
}

} // namespace quillmender::wayland
