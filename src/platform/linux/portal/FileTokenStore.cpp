#include "platform/linux/portal/FileTokenStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>

#include <utility>

namespace quillmender::portal {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.portal", QtWarningMsg)

constexpr qint64 longest = 4096;

} // namespace

FileTokenStore::FileTokenStore(QString path) : path_(std::move(path)) {}

QString FileTokenStore::usualPath() {
    // Releases of the toolkit before 6.7 do not know this folder.
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(state))
        state = QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/quillmender/portal-token");
}

QString FileTokenStore::token() {
    if (!token_) {
        QFile file(path_);
        token_ = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(longest)).trimmed()
                                                : QString();
    }
    return *token_;
}

void FileTokenStore::setToken(const QString &token) {
    if (token == this->token())
        return;
    token_ = token;
    if (!write())
        qCWarning(log, "the portal will have to ask the user again: %s cannot be written",
                  qUtf8Printable(path_));
}

bool FileTokenStore::write() const {
    // One that is no good any more would have the user asked by typing.
    if (token_->isEmpty())
        return QFile::remove(path_) || !QFile::exists(path_);
    QDir().mkpath(QFileInfo(path_).path());
    QSaveFile file(path_);
    return file.open(QIODevice::WriteOnly) &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
           file.write(token_->toUtf8()) >= 0 && file.commit();
}

} // namespace quillmender::portal
