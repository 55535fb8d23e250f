#include "desktop/harness/gnome/GnomeDesktop.h"

#include "desktop/harness/DesktopEntry.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/ProductProcess.h"
#include "desktop/harness/gnome/GnomeClipboardOwner.h"
#include "desktop/harness/gnome/GnomeClipboardProbe.h"

#include <QDBusMessage>
#include <QDBusVariant>

namespace quillmender::harness {

namespace {

// What the session's programs call for, and start by calling it.
QStringList services() {
    QStringList files;
    for (const char *name :
         {"ca.desrt.dconf", "org.freedesktop.portal.Desktop",
          "org.freedesktop.impl.portal.PermissionStore",
          "org.freedesktop.impl.portal.desktop.gnome", "org.freedesktop.impl.portal.desktop.gtk",
          "org.gnome.Settings.GlobalShortcutsProvider"}) {
        files.append(
            QStringLiteral("/usr/share/dbus-1/services/%1.service").arg(QLatin1String(name)));
    }
    return files;
}

} // namespace

GnomeDesktop::GnomeDesktop(const Options &options) {
    setVariable("XDG_SESSION_TYPE", QStringLiteral("wayland"));
    setVariable("XDG_SESSION_CLASS", QStringLiteral("user"));
    setVariable("GDK_BACKEND", QStringLiteral("wayland"));
    setVariable("QT_QPA_PLATFORM", QStringLiteral("wayland"));
    setVariable("MOZ_ENABLE_WAYLAND", QStringLiteral("1"));
    // The shell hears of changes as it does for everybody: from the service of the settings.
    removeVariable("GSETTINGS_BACKEND");
    const auto take = [this](const QMap<QString, QString> &variables) {
        for (auto each = variables.cbegin(); each != variables.cend(); ++each)
            setVariable(each.key().toLatin1().constData(), each.value());
    };
    take(GnomeShell::variablesBefore());
    prepareFor(ProductProcess::path());
    startSessionBus(services());
    tellServices();
    // Programs look for it when they start, and the shell is one.
    startAccessibilityBus(options.shell.accessibility);
    if (options.keyring)
        startKeyring();
    shell_ =
        std::make_unique<GnomeShell>(options.shell, GnomeShell::Place{.folders = folders(),
                                                                      .environment = environment(),
                                                                      .sessionBus = sessionBus()});
    take(shell_->variables());
    tellServices();
    waitForPortals();
    dialogs_ = std::make_unique<GnomeDialogs>(sessionBus(), accessible());
}

GnomeDesktop::~GnomeDesktop() {
    dialogs_.reset();
    shell_.reset();
    endServices();
    endSessionBus();
}

uint GnomeDesktop::portalVersion(const QString &interface) {
    constexpr int startDeadlineMs = 30000;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments(
        {QStringLiteral("org.freedesktop.portal.") + interface, QStringLiteral("version")});
    const QDBusMessage answer = sessionBus().connection().call(call, QDBus::Block, startDeadlineMs);
    return answer.arguments().value(0).value<QDBusVariant>().variant().toUInt();
}

// The shell has them started when it has hardly started itself, and a busy machine gives them up
// then: the next who calls starts them anew.
void GnomeDesktop::waitForPortals() {
    constexpr std::chrono::minutes longStart{2};
    waitUntil([this] { return portalVersion(QStringLiteral("GlobalShortcuts")) > 0; },
              QStringLiteral("the portals are up"), longStart);
}

std::unique_ptr<SelectionOwner>
GnomeDesktop::ownClipboard(const QList<ClipboardRepresentation> &offer) {
    return std::make_unique<GnomeClipboardOwner>(sessionBus().connection(), offer);
}

ClipboardContents GnomeDesktop::readClipboard() {
    return GnomeClipboardProbe(sessionBus().connection()).read(defaultDeadline);
}

std::optional<QByteArray> GnomeDesktop::readClipboardText(std::chrono::milliseconds deadline) {
    return GnomeClipboardProbe(sessionBus().connection()).readText(deadline);
}

std::unique_ptr<SelectionOwner> GnomeDesktop::ownSelectedText(const QString & /*text*/) {
    throw HarnessError(QStringLiteral("nobody takes the selected text on GNOME"));
}

QString GnomeDesktop::selectedText() {
    throw HarnessError(QStringLiteral("nobody reads the selected text on GNOME"));
}

void GnomeDesktop::prepareFor(const QString &program) {
    installDesktopEntry(folders(), program, QStringLiteral(QUILLMENDER_DESKTOP_FILE));
}

} // namespace quillmender::harness
