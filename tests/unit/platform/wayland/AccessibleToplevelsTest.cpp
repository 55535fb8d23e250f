#include "platform/linux/wayland/windows/AccessibleToplevels.h"

#include "unit/platform/wayland/WaitFor.h"

#include <QGuiApplication>
#include <QWindow>
#include <gtest/gtest.h>

namespace quillmender::wayland {

namespace {

class FakeFrontWindows : public FrontWindows {
  public:
    std::optional<FrontWindow> latest() const override { return window; }
    bool isActive() const override { return window && isInFront; }

    void show(const std::optional<FrontWindow> &shown, bool isShownInFront) {
        window = shown;
        isInFront = isShownInFront;
        Q_EMIT changed();
    }

    std::optional<FrontWindow> window;
    bool isInFront = false;
};

class AccessibleToplevelsTest : public testing::Test {
  protected:
    const FrontWindow editor_{"editor", 4711, QStringLiteral("gedit"), QStringLiteral("letter")};
    FakeFrontWindows front_;
    AccessibleToplevels toplevels_{front_};
};

TEST_F(AccessibleToplevelsTest, TellsWhatIsInFront) {
    EXPECT_FALSE(toplevels_.active());
    front_.show(editor_, true);
    const auto active = toplevels_.active();
    ASSERT_TRUE(active);
    EXPECT_EQ(active->id, "editor");
    EXPECT_EQ(active->processId, 4711);
    EXPECT_EQ(active->appId, QStringLiteral("gedit"));
    EXPECT_EQ(active->title, QStringLiteral("letter"));
    EXPECT_TRUE(toplevels_.hasKeyboard("editor"));
    EXPECT_FALSE(toplevels_.hasKeyboard("another"));
}

TEST_F(AccessibleToplevelsTest, SaysThatItActivatesNothing) {
    front_.show(editor_, true);
    EXPECT_FALSE(toplevels_.activate("editor"));
}

TEST_F(AccessibleToplevelsTest, NothingIsActiveWhileWhoIsInFrontIsNotSeen) {
    front_.show(editor_, true);
    front_.show(editor_, false);
    EXPECT_FALSE(toplevels_.active());
    EXPECT_FALSE(toplevels_.hasKeyboard("editor"));
}

TEST_F(AccessibleToplevelsTest, StaysTheActiveOneWhileOursHasTheKeyboard) {
    front_.show(editor_, true);
    auto panel = std::make_unique<QWindow>();
    panel->show();
    front_.show(editor_, false);
    EXPECT_TRUE(toplevels_.active()) << "on the way to ours";
    panel->requestActivate();
    ASSERT_TRUE(waitFor([&] { return QGuiApplication::focusWindow() == panel.get(); }));
    EXPECT_TRUE(toplevels_.active());
    EXPECT_FALSE(toplevels_.hasKeyboard("editor"));
    panel.reset();
    ASSERT_EQ(QGuiApplication::focusWindow(), nullptr);
    // Of a window that is destroyed the toolkit does not tell that it was the one.
    Q_EMIT qGuiApp->focusWindowChanged(nullptr);
    EXPECT_TRUE(toplevels_.active()) << "on the way back";
    EXPECT_FALSE(toplevels_.hasKeyboard("editor"));
    front_.show(editor_, true);
    EXPECT_TRUE(toplevels_.hasKeyboard("editor"));
}

TEST_F(AccessibleToplevelsTest, DoesNotHaveTheKeyboardBeforeOursHasLetGoOfIt) {
    front_.show(editor_, true);
    QWindow panel;
    panel.show();
    panel.requestActivate();
    ASSERT_TRUE(waitFor([&] { return QGuiApplication::focusWindow() == &panel; }));
    EXPECT_TRUE(toplevels_.active()) << "it hangs, and has told nothing";
    EXPECT_FALSE(toplevels_.hasKeyboard("editor"));
}

TEST_F(AccessibleToplevelsTest, IsNotActiveForLongWhenItDoesNotComeBack) {
    front_.show(editor_, true);
    auto panel = std::make_unique<QWindow>();
    panel->show();
    front_.show(editor_, false);
    ASSERT_TRUE(toplevels_.active());
    panel.reset();
    bool isTold = false;
    QObject::connect(&toplevels_, &Toplevels::changed, &toplevels_,
                     [&] { isTold = !toplevels_.active(); });
    EXPECT_TRUE(waitFor([&] { return isTold; })) << "whoever waits is told";
}

TEST_F(AccessibleToplevelsTest, WhatHasGoneIsNotActiveAnyMore) {
    front_.show(editor_, true);
    QWindow panel;
    panel.show();
    panel.requestActivate();
    ASSERT_TRUE(waitFor([&] { return QGuiApplication::focusWindow() == &panel; }));
    front_.show(std::nullopt, false);
    EXPECT_FALSE(toplevels_.active());
}

} // namespace

} // namespace quillmender::wayland
