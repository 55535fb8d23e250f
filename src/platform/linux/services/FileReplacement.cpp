#include "platform/linux/services/FileReplacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace quillmender {

namespace {

QString failure(const char *what, const QString &path, const QString &reason) {
    return QStringLiteral("Could not %1 “%2”: %3")
        .arg(QLatin1String(what), QDir::toNativeSeparators(path), reason);
}

bool writeThrough(QTemporaryFile &file, const QByteArray &contents) {
    return file.write(contents) == contents.size() && file.flush() && ::fsync(file.handle()) == 0;
}

} // namespace

std::optional<QString> replaceFile(const QString &path, const QByteArray &contents) {
    const QFileInfo target(path);
    errno = 0;
    if (!QDir().mkpath(target.path()))
        return failure("write", path, qt_error_string(errno));
    QTemporaryFile file(target.path() + QStringLiteral("/.XXXXXX.") + target.fileName() +
                        QStringLiteral(".new"));
    if (!file.open() || !writeThrough(file, contents))
        return failure("write", path, file.errorString());
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    if (std::rename(QFile::encodeName(file.fileName()).constData(),
                    QFile::encodeName(path).constData()) != 0)
        return failure("write", path, qt_error_string(errno));
    file.setAutoRemove(false);
    return std::nullopt;
}

std::optional<QString> removeFile(const QString &path) {
    if (::unlink(QFile::encodeName(path).constData()) == 0 || errno == ENOENT || errno == ENOTDIR)
        return std::nullopt;
    return failure("remove", path, qt_error_string(errno));
}

} // namespace quillmender
