#include "desktop/harness/DesktopEntry.h"

#include "desktop/harness/DesktopFolders.h"
#include "desktop/harness/HarnessError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillmender::harness {

namespace {

QByteArray entryOf(const QString &program, const QString &desktopFile) {
    QFile file(desktopFile);
    if (!file.open(QIODevice::ReadOnly))
        throw HarnessError(QStringLiteral("no %1").arg(desktopFile));
    const QString executable = QFileInfo(program).canonicalFilePath();
    QByteArray contents;
    bool isStarted = false; // what comes after that is how its actions are
    while (!file.atEnd()) {
        QByteArray line = file.readLine();
        if (line.startsWith("TryExec="))
            continue;
        if (line.startsWith("Exec=") && !isStarted) {
            line = "Exec=" + QFile::encodeName(executable) + '\n';
            isStarted = true;
        }
        contents += line;
    }
    return contents;
}

} // namespace

bool installDesktopEntry(const DesktopFolders &folders, const QString &program,
                         const QString &desktopFile) {
    const QByteArray contents = entryOf(program, desktopFile);
    QString name = QFileInfo(desktopFile).fileName();
    if (name.endsWith(QStringLiteral(".in")))
        name.chop(3);
    const QString folder = folders.data() + QStringLiteral("/applications");
    QDir().mkpath(folder);
    QFile entry(folder + QLatin1Char('/') + name);
    if (entry.open(QIODevice::ReadOnly) && entry.readAll() == contents)
        return false;
    entry.close();
    if (!entry.open(QIODevice::WriteOnly) || entry.write(contents) != contents.size())
        throw HarnessError(QStringLiteral("cannot write %1").arg(entry.fileName()));
    return true;
}

} // namespace quillmender::harness
