#include "platform/linux/desktop/InstalledProgram.h"

#include "platform/ApplicationId.h"
#include "platform/linux/desktop/DesktopEntry.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace quillmender {

namespace {

QStringList commandOf(const QString &path) {
    const auto entry = DesktopEntry::read(path);
    if (!entry || entry->isTrue(QStringLiteral("Hidden")))
        return {};
    return entry->command();
}

} // namespace

QStringList installedProgram(const QString &runningExecutable) {
    const QString file =
        QStringLiteral("applications/%1.desktop").arg(QLatin1String(applicationId));
    // Only the first one counts: it hides those of the folders behind it.
    const QString known = QStandardPaths::locate(QStandardPaths::GenericDataLocation, file);
    QStringList command = commandOf(known);
    if (!command.isEmpty())
        return command;

    const QFileInfo own(runningExecutable);
    command = commandOf(own.path() + QStringLiteral("/../share/") + file);
    if (!command.isEmpty())
        return command;

    const QString found = QStandardPaths::findExecutable(own.fileName());
    if (!found.isEmpty() && QFileInfo(found).canonicalFilePath() == own.canonicalFilePath())
        return {found};
    return {};
}

} // namespace quillmender
