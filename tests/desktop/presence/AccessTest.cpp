#include "desktop/harness/AccessibilityBus.h"
#include "desktop/presence/PresenceFixture.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDir>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::ChildProcess;
using harness::waitUntil;

/// Sessions of one user, with the settings where desktops keep them.
class AccessTest : public PresenceFixture {
  protected:
    void SetUp() override {
        PresenceFixture::SetUp();
        startDesktop({.accessibilityBus = false, .keyring = false});
    }

    QProcessEnvironment environment(const harness::SessionBus &bus) {
        QProcessEnvironment all = desktop().environment();
        all.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("dconf"));
        all.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
        return all;
    }

    /// A service that a login starts on its bus.
    std::unique_ptr<ChildProcess> startService(const harness::SessionBus &bus,
                                               const QString &program, const QString &name) {
        auto process = std::make_unique<ChildProcess>(
            harness::Command{.program = QStringLiteral("/usr/libexec/") + program,
                             .arguments = {},
                             .environment = environment(bus),
                             .logFile = desktop().folders().log(program),
                             .input = {},
                             .pipeOutput = false,
                             .workingDirectory = desktop().folders().home()});
        bus.waitForOwner(name);
        return process;
    }

    /// What any other program of the user reads now.
    QByteArray setting(const harness::SessionBus &bus) {
        ChildProcess reader(
            {.program = QStringLiteral("gsettings"),
             .arguments = {QStringLiteral("get"), QStringLiteral("org.gnome.desktop.interface"),
                           QStringLiteral("toolkit-accessibility")},
             .environment = environment(bus),
             .logFile = desktop().folders().log(QStringLiteral("gsettings")),
             .input = {},
             .pipeOutput = true,
             .workingDirectory = {}});
        return reader.readLine(harness::defaultDeadline).trimmed();
    }

    std::unique_ptr<ChildProcess> startSettings(const harness::SessionBus &bus) {
        return startService(bus, QStringLiteral("dconf-service"), QStringLiteral("ca.desrt.dconf"));
    }
};

bool isEnabled(const harness::SessionBus &bus) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled");
    const QDBusReply<QVariant> reply = bus.connection().call(call);
    EXPECT_TRUE(reply.isValid()) << reply.error().message().toStdString();
    return reply.value().toBool();
}

// The accessibility bus keeps it in the setting. Where the schema org.gnome.desktop.interface is
// not installed it cannot, and the grant lasts as long as the session.
TEST_F(AccessTest, AGrantSurvivesTheSession) {
    {
        harness::SessionBus &bus = desktop().sessionBus();
        const auto settings = startSettings(bus);
        const harness::AccessibilityBus first(bus, false, environment(bus),
                                              desktop().folders().log(QStringLiteral("first")));
        // The test finds the button on the bus where applications are not yet.
        startProgram({.settings = {},
                      .apiKeys = {},
                      .environment = {{QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"),
                                       QStringLiteral("1")}}});
        program().activateAction(QStringLiteral("transform"));
        waitForWindow(QStringLiteral("Quillmender"));
        const Accessible button = harness::AccessibleClient(first).waitFor(
            program().pid(), QStringLiteral("push button"),
            QStringLiteral("Request Accessibility Access"));
        EXPECT_FALSE(isEnabled(bus));
        desktop().input().click(button.extents().center());
        waitUntil([&] { return isEnabled(bus); }, QStringLiteral("access is granted"));
        waitUntil([&] { return setting(bus) == "true"; }, QStringLiteral("it is stored"));
        program().activateAction(QStringLiteral("quit"));
        waitUntilProgramHasEnded();
    }
    const QString folder = desktop().folders().runtime() + QStringLiteral("/second");
    QDir().mkpath(folder);
    const harness::SessionBus bus(folder, desktop().environment(),
                                  desktop().folders().log(QStringLiteral("second-bus")));
    const auto settings = startSettings(bus);
    const auto second =
        startService(bus, QStringLiteral("at-spi-bus-launcher"), QStringLiteral("org.a11y.Bus"));
    EXPECT_TRUE(isEnabled(bus));
}

} // namespace
} // namespace quillmender
