#include "platform/linux/wayland/own/FocusedModifiers.h"

#include "platform/linux/wayland/own/KeyboardWatch.h"
#include "unit/platform/wayland/FakeToplevels.h"
#include "unit/platform/wayland/TestSeat.h"
#include "unit/platform/wayland/WaitFor.h"

#include <QGuiApplication>
#include <QWindow>
#include <gtest/gtest.h>

#include <cstring>
#include <wayland-client.h>

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;

constexpr quint32 shift = 1;
constexpr quint32 capsLock = 2;
constexpr quint32 control = 4;
constexpr quint32 numLock = 16;

struct Disconnect {
    void operator()(wl_display *display) const { wl_display_disconnect(display); }
};

/// A window that another program shows, and a client with a surface that the keyboard can go to.
class FocusedModifiersTest : public testing::Test {
  protected:
    FocusedModifiersTest() {
        static const wl_registry_listener listener{
            [](void *self, wl_registry *registry, uint32_t name, const char *interface, uint32_t) {
                if (std::strcmp(interface, wl_compositor_interface.name) == 0)
                    static_cast<FocusedModifiersTest *>(self)->core_ = static_cast<wl_compositor *>(
                        wl_registry_bind(registry, name, &wl_compositor_interface, 1));
            },
            [](void *, wl_registry *, uint32_t) {}};
        registry_ = wl_display_get_registry(display_.get());
        wl_registry_add_listener(registry_, &listener, this);
        hear();
        surface_ = wl_compositor_create_surface(core_);
        hear();
        hear();
        Toplevel editor;
        editor.id = "editor";
        toplevels_.front = editor;
        hearing_.callOnTimeout([this] { hear(); });
        hearing_.start(2);
    }
    ~FocusedModifiersTest() override {
        wl_surface_destroy(surface_);
        wl_compositor_destroy(core_);
        wl_registry_destroy(registry_);
    }

    void hear() { wl_display_roundtrip(display_.get()); }

    /// The window that takes the keyboard to hear of the modifiers; null while there is none.
    static QWindow *listener() {
        for (QWindow *window : QGuiApplication::topLevelWindows())
            if (window->isVisible())
                return window;
        return nullptr;
    }

    /// What comes of waiting, while `compositor` does its part once the window is there.
    std::optional<QString> wait(const std::function<void()> &compositor = {}) {
        bool isDone = false;
        std::optional<QString> obstacle;
        const auto ask = [&]() -> QCoro::Task<> {
            obstacle = co_await modifiers_.waitUntilUp();
            isDone = true;
        };
        const auto task = ask();
        if (compositor) {
            EXPECT_TRUE(waitFor([] { return listener() != nullptr; }));
            toplevels_.isWithWindows = false;
            compositor();
        }
        EXPECT_TRUE(waitFor([&] { return isDone; }));
        return obstacle;
    }

    void give() {
        seat_.leave();
        toplevels_.isWithWindows = true;
        Q_EMIT toplevels_.changed();
    }

    TestCompositor compositor_;
    TestSeat seat_{compositor_};
    std::unique_ptr<wl_display, Disconnect> display_{
        wl_display_connect(compositor_.name().constData())};
    wl_registry *registry_ = nullptr;
    wl_compositor *core_ = nullptr;
    wl_surface *surface_ = nullptr;
    KeyboardWatch keyboard_{display_.get()};
    FakeToplevels toplevels_;
    FocusedModifiers modifiers_{keyboard_, toplevels_};
    QTimer hearing_;
};

TEST_F(FocusedModifiersTest, WatchTellsWhatMixesWithKeysAndNoLocks) {
    EXPECT_EQ(keyboard_.modifiers(), std::nullopt);
    seat_.enterSilently();
    hear();
    EXPECT_EQ(keyboard_.modifiers(), std::nullopt) << "it has not been told yet";
    seat_.tellModifiers(control, shift, capsLock | numLock, 1);
    hear();
    EXPECT_EQ(keyboard_.modifiers(), control | shift);
    EXPECT_EQ(keyboard_.layout(), 1);
    EXPECT_EQ(keyboard_.modifiersAtDeparture(10s), std::nullopt) << "it is here";
    seat_.leave();
    hear();
    EXPECT_EQ(keyboard_.modifiers(), std::nullopt);
    EXPECT_EQ(keyboard_.modifiersAtDeparture(10s), control | shift);
    EXPECT_EQ(keyboard_.modifiersAtDeparture(-1ms), std::nullopt) << "that is too long ago";
}

TEST_F(FocusedModifiersTest, WhatWasHeardJustNowIsBelieved) {
    seat_.enter(numLock);
    seat_.leave();
    hear();
    EXPECT_EQ(wait(), std::nullopt);
    EXPECT_EQ(listener(), nullptr);
}

TEST_F(FocusedModifiersTest, AWindowTakesTheKeyboardUntilAllAreUp) {
    const auto obstacle = wait([this] {
        seat_.enter(control);
        EXPECT_TRUE(waitFor([this] { return keyboard_.modifiers() == control; }));
        EXPECT_NE(listener(), nullptr);
        seat_.tellModifiers(0, 0, 0, 0);
        EXPECT_TRUE(waitFor([] { return listener() == nullptr; }));
        give();
    });
    EXPECT_EQ(obstacle, std::nullopt);
}

TEST_F(FocusedModifiersTest, WhatWasHeldWhenOursLetGoIsAskedAgain) {
    seat_.enter(control);
    seat_.leave();
    hear();
    const auto obstacle = wait([this] {
        seat_.enter(0);
        EXPECT_TRUE(waitFor([] { return listener() == nullptr; }));
        give();
    });
    EXPECT_EQ(obstacle, std::nullopt);
}

TEST_F(FocusedModifiersTest, WaitsForTheKeyboardToBeBack) {
    bool isBack = false;
    const auto obstacle = wait([&] {
        seat_.enter(0);
        EXPECT_TRUE(waitFor([] { return listener() == nullptr; }));
        QTimer::singleShot(50ms, &toplevels_, [&] {
            isBack = true;
            give();
        });
    });
    EXPECT_EQ(obstacle, std::nullopt);
    EXPECT_TRUE(isBack);
}

TEST_F(FocusedModifiersTest, OnesThatStayDownAreAnObstacle) {
    const auto obstacle = wait([this] {
        seat_.enter(control);
        EXPECT_TRUE(waitFor([] { return listener() == nullptr; }));
        give();
    });
    EXPECT_TRUE(obstacle && obstacle->contains(QStringLiteral("holds")));
}

TEST_F(FocusedModifiersTest, AKeyboardThatDoesNotComeTellsNothing) {
    const auto obstacle = wait([] {});
    EXPECT_TRUE(obstacle && obstacle->contains(QStringLiteral("does not tell")));
    EXPECT_EQ(listener(), nullptr);
}

} // namespace

} // namespace quillmender::wayland
