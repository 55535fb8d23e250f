#include "desktop/gnome/PortalUser.h"
#include "desktop/portal/RemoteDesktopFakes.h"
#include "platform/linux/portal/RemoteDesktopKeys.h"

namespace quillmender {
namespace {

using portal::PortalAnswer;
using Outcome = PortalAnswer::Outcome;

/// The user is asked for the keyboard.
class GnomeDialogsTest : public PortalUser {
  protected:
    PortalAnswer askForKeyboard(const std::function<void()> &user) {
        portal::RemoteDesktopKeys keys(newPortal(), tokens_, nullptr, fakeCodes);
        return resultOf(keys.askUser(), user);
    }

    FakeTokens tokens_;
};

TEST_F(GnomeDialogsTest, RemoteDesktopIsAllowedAndRemembered) {
    const PortalAnswer first =
        askForKeyboard([this] { desktop().dialogs().acceptRemoteDesktop(); });
    EXPECT_EQ(first.outcome, Outcome::granted) << first.reason.toStdString();
    EXPECT_FALSE(tokens_.kept.isEmpty());
    const PortalAnswer second = askForKeyboard([] {});
    EXPECT_EQ(second.outcome, Outcome::granted) << second.reason.toStdString();
    EXPECT_FALSE(desktop().dialogs().asksForRemoteDesktop());
}

TEST_F(GnomeDialogsTest, RemoteDesktopIsRefused) {
    const PortalAnswer answer =
        askForKeyboard([this] { desktop().dialogs().refuseRemoteDesktop(); });
    EXPECT_EQ(answer.outcome, Outcome::cancelled);
    EXPECT_EQ(tokens_.kept, QString());
}

} // namespace
} // namespace quillmender
