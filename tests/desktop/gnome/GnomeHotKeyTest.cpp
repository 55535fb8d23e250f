#include "desktop/gnome/ActivationCount.h"
#include "desktop/gnome/PortalUser.h"
#include "platform/linux/portal/PortalHotKeys.h"

#include <X11/keysym.h>

namespace quillmender {
namespace {

using harness::waitUntil;

constexpr QKeyCombination wanted = Qt::ControlModifier | Qt::AltModifier | Qt::Key_Space;

/// The hot key itself, with a real user's desktop behind it.
class GnomeHotKeyTest : public PortalUser {
  protected:
    HotKeyOutcome hold(const std::function<void()> &user) {
        portal::Portal &portal = newPortal();
        activations_.emplace(portal.bus());
        hotKeys_.emplace(portal);
        return resultOf(hotKeys_->hold(wanted, [this] { ++presses_; }), user);
    }

    void pressAndRelease() { desktop().input().chord({XK_Control_L, XK_Alt_L, XK_space}); }

    void waitForPresses(int count) {
        waitUntil([&] { return presses_ >= count; }, QStringLiteral("press %1 counts").arg(count));
        EXPECT_EQ(presses_, count);
    }

    int presses_ = 0;
    std::optional<ActivationCount> activations_;

  private:
    std::optional<portal::PortalHotKeys> hotKeys_;
};

TEST_F(GnomeHotKeyTest, TheUserIsAskedOnceAndEachPressCounts) {
    {
        const HotKeyOutcome held = hold([this] { desktop().dialogs().acceptKeys(); });
        ASSERT_TRUE(held.hotKey) << held.reason.toStdString();
        EXPECT_EQ(held.hotKey->keys(), wanted);
        pressAndRelease();
        waitForPresses(1);
        pressAndRelease();
        waitForPresses(2);
    }
    const HotKeyOutcome again = hold([] {});
    ASSERT_TRUE(again.hotKey) << again.reason.toStdString();
    EXPECT_EQ(again.hotKey->keys(), wanted);
    pressAndRelease();
    waitForPresses(3);
    EXPECT_FALSE(desktop().dialogs().asksForKeys()) << "the user is asked again";
}

TEST_F(GnomeHotKeyTest, AHeldKeyCountsOnce) {
    const HotKeyOutcome held = hold([this] { desktop().dialogs().acceptKeys(); });
    ASSERT_TRUE(held.hotKey) << held.reason.toStdString();
    constexpr int enoughRepeats = 10;
    for (const quint32 key : {XK_Control_L, XK_Alt_L, XK_space})
        desktop().input().press(key);
    waitUntil([&] { return activations_->count() >= enoughRepeats; },
              QStringLiteral("the portal tells of the repeats"));
    waitForPresses(1);
    for (const quint32 key : {XK_space, XK_Alt_L, XK_Control_L})
        desktop().input().release(key);
    pressAndRelease();
    waitForPresses(2);
}

TEST_F(GnomeHotKeyTest, TheUserMayRefuse) {
    const HotKeyOutcome outcome = hold([this] { desktop().dialogs().refuseKeys(); });
    EXPECT_FALSE(outcome.hotKey);
    // That it was the user is not told by each of GNOME's portals.
    EXPECT_FALSE(outcome.reason.isEmpty());
}

} // namespace
} // namespace quillmender
