#include "desktop/portal/FakeDesktopPortal.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"
#include "platform/linux/portal/PortalShortcut.h"

#include <QDBusObjectPath>

#include <optional>

namespace quillmender {
namespace {

using Manner = FakeDesktopPortal::Manner;
using harness::waitUntil;

const QString interface = QStringLiteral("GlobalShortcuts");
const QString create = QStringLiteral("GlobalShortcuts.CreateSession");
const QString list = QStringLiteral("GlobalShortcuts.ListShortcuts");
const QString bind = QStringLiteral("GlobalShortcuts.BindShortcuts");

/// The program where the portal alone has global shortcuts. The user's own configuration has a key,
/// too, so that it can be seen that the program goes on whatever the portal does.
class PortalSessionTest : public WaylandSessionFixture {
  protected:
    harness::CompositorKind kind() const override { return harness::CompositorKind::labwc; }

    void SetUp() override {
        WaylandSessionFixture::SetUp();
        if (IsSkipped())
            return;
        portal::registerPortalShortcuts();
        startDesktop();
        makePortal();
        allowLog();
    }

    void TearDown() override {
        WaylandSessionFixture::TearDown();
        portal_.reset();
    }

    void makePortal() { portal_.emplace(desktop().sessionBus().address()); }

    void grantKeys() {
        const portal::PortalShortcut ours{
            QStringLiteral("transform"),
            {{QStringLiteral("trigger_description"), QStringLiteral("Ctrl+Alt+Space")}}};
        portal_->grant(bind, {{QStringLiteral("shortcuts"),
                               QVariant::fromValue(portal::PortalShortcuts{ours})}});
    }

    void waitUntilAsked(const QString &method) {
        waitUntil([&] { return portal_->asked().contains(method); },
                  QStringLiteral("the portal is asked for ") + method);
    }

    void waitUntilLogged(const char *words) {
        waitUntil([&] { return program().log().contains(words); },
                  QStringLiteral("the log says: ") + QString::fromLatin1(words));
    }

    /// Again and again: the program may not yet have heard what the portal has answered.
    void pressUntilPanel() {
        waitUntil(
            [&] {
                tell(QStringLiteral("Activated"));
                tell(QStringLiteral("Deactivated"));
                return panelShows(QStringLiteral("Fix My Grammar"));
            },
            QStringLiteral("the shortcut opens the panel"));
    }

    void tell(const QString &signal) {
        portal_->send(QStringLiteral("/org/freedesktop/portal/desktop"), interface, signal,
                      {QVariant::fromValue(QDBusObjectPath(portal_->session())),
                       QStringLiteral("transform"), quint64{1}, QVariantMap()});
    }

    std::optional<FakeDesktopPortal> portal_;
};

TEST_F(PortalSessionTest, ItsShortcutOpensThePanelAndIsBoundAgainWhenItHasComeBack) {
    grantKeys();
    startProgram();
    waitUntilAsked(bind);
    pressUntilPanel();
    waitForPanel();
    EXPECT_FALSE(program().log().contains("no hot key"));
    portal_.reset();
    makePortal();
    grantKeys();
    waitUntilAsked(bind);
}

TEST_F(PortalSessionTest, WhatItRefusesIsSaid) {
    portal_->set(bind, {1, {}});
    startProgram();
    waitUntilLogged("there is no hot key: the user has not agreed");
    pressHotKey();
    waitForPanel();
}

TEST_F(PortalSessionTest, OneThatNeverAnswersHoldsNothingUp) {
    portal_->set(create, {0, {}, Manner::mute});
    startProgram();
    waitUntilAsked(create);
    pressHotKey();
    waitForPanel();
    waitUntilLogged("there is no hot key: the portal does not answer");
}

TEST_F(PortalSessionTest, OneThatAnswersTwiceIsBelievedOnce) {
    grantKeys();
    portal_->set(create, {0, {}, Manner::twice});
    startProgram();
    waitUntilAsked(bind);
    pressUntilPanel();
    EXPECT_FALSE(program().log().contains("no hot key"));
}

} // namespace
} // namespace quillmender
