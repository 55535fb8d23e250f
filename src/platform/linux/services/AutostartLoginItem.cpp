#include "platform/linux/services/AutostartLoginItem.h"

#include "platform/ApplicationId.h"
#include "platform/linux/desktop/AutostartFolder.h"
#include "platform/linux/desktop/DesktopEntry.h"
#include "platform/linux/desktop/ExecLine.h"
#include "platform/linux/desktop/InstalledProgram.h"
#include "platform/linux/desktop/SettingsPages.h"
#include "platform/linux/services/FileReplacement.h"

#include <QFile>
#include <QStandardPaths>

namespace quillmender {

namespace {

const QString hidden = QStringLiteral("Hidden");
const QString gnomeEnabled = QStringLiteral("X-GNOME-Autostart-enabled");
// Tells our own "no" to an administrator's file from one that the desktop's tool wrote.
const QString unregistered = QStringLiteral("X-Quillmender-Unregistered");

QString fileName() {
    return QStringLiteral("%1.desktop").arg(QLatin1String(applicationId));
}

QString userFile() {
    return autostartFolder() + u'/' + fileName();
}

std::optional<DesktopEntry> administratorsEntry() {
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    folders.removeFirst();
    for (const QString &folder : folders) {
        const QString path = folder + QStringLiteral("/autostart/") + fileName();
        if (QFile::exists(path))
            return DesktopEntry::read(path);
    }
    return std::nullopt;
}

LoginItemStatus statusOf(const std::optional<DesktopEntry> &entry) {
    if (!entry)
        return LoginItemStatus::notRegistered;
    if (entry->isTrue(hidden) || entry->isFalse(gnomeEnabled))
        return entry->isTrue(unregistered) ? LoginItemStatus::notRegistered
                                           : LoginItemStatus::requiresApproval;
    return entry->command().isEmpty() ? LoginItemStatus::notRegistered : LoginItemStatus::enabled;
}

bool administratorStartsIt() {
    return statusOf(administratorsEntry()) == LoginItemStatus::enabled;
}

QByteArray enabledEntry(const QString &program, const QString &exec) {
    return DesktopEntry::format({{QStringLiteral("Type"), QStringLiteral("Application")},
                                 {QStringLiteral("Name"), QStringLiteral("Quillmender")},
                                 {QStringLiteral("Icon"), QLatin1String(applicationId)},
                                 {QStringLiteral("TryExec"), program},
                                 {QStringLiteral("Exec"), exec},
                                 {QStringLiteral("Terminal"), QStringLiteral("false")},
                                 {QStringLiteral("StartupNotify"), QStringLiteral("false")},
                                 {gnomeEnabled, QStringLiteral("true")}});
}

QByteArray refusingEntry() {
    return DesktopEntry::format({{QStringLiteral("Type"), QStringLiteral("Application")},
                                 {QStringLiteral("Name"), QStringLiteral("Quillmender")},
                                 {hidden, QStringLiteral("true")},
                                 {unregistered, QStringLiteral("true")}});
}

} // namespace

LoginItemStatus AutostartLoginItem::status() {
    if (installedProgram().isEmpty())
        return LoginItemStatus::notFound;
    // A dangling link counts as no file, as it does for whoever starts the session.
    if (QFile::exists(userFile()))
        return statusOf(DesktopEntry::read(userFile()));
    return administratorStartsIt() ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
}

std::optional<QString> AutostartLoginItem::registerItem() {
    const QStringList command = installedProgram();
    const auto exec = execLine::format(command);
    if (!exec)
        return QStringLiteral("Quillmender is not installed where the desktop can start it.");
    switch (status()) {
    case LoginItemStatus::enabled:
    case LoginItemStatus::requiresApproval:
        return std::nullopt;
    case LoginItemStatus::notRegistered:
    case LoginItemStatus::notFound:
        break;
    }
    return replaceFile(userFile(), enabledEntry(command.constFirst(), *exec));
}

std::optional<QString> AutostartLoginItem::unregisterItem() {
    if (administratorStartsIt())
        return replaceFile(userFile(), refusingEntry());
    return removeFile(userFile());
}

void AutostartLoginItem::openSystemSettings() {
    settingsPages::open(DesktopPage::loginItems);
}

} // namespace quillmender
