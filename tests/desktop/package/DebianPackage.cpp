#include "desktop/package/DebianPackage.h"

#include "desktop/package/Tool.h"

namespace quillmender::DebianPackage {

QString path() {
    return QStringLiteral(QUILLMENDER_PACKAGE);
}

QString field(const QString &name) {
    return QString::fromUtf8(
               requireTool(QStringLiteral("dpkg-deb"), {QStringLiteral("--field"), path(), name}))
        .trimmed();
}

QStringList contents() {
    const QByteArray listing =
        requireTool(QStringLiteral("dpkg-deb"), {QStringLiteral("--contents"), path()});
    QStringList paths;
    for (const QByteArray &line : listing.split('\n')) {
        const auto start = line.indexOf(" ./");
        if (start < 0)
            continue;
        QString file = QString::fromUtf8(line.mid(start + 2));
        if (file.endsWith(u'/'))
            file.chop(1);
        if (!file.isEmpty())
            paths.append(file);
    }
    return paths;
}

void extract(const QString &folder) {
    requireTool(QStringLiteral("dpkg-deb"), {QStringLiteral("--extract"), path(), folder});
}

} // namespace quillmender::DebianPackage
