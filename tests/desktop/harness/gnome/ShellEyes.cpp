#include "desktop/harness/gnome/ShellEyes.h"

#include "desktop/harness/DesktopFolders.h"
#include "desktop/harness/HarnessError.h"

#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QJsonDocument>

namespace quillmender::harness {

namespace {

constexpr int callDeadlineMs = 3000;

} // namespace

QString ShellEyes::install(const DesktopFolders &folders) {
    const QString name = QStringLiteral("eyes@test-harness");
    const QString target = folders.data() + QStringLiteral("/gnome-shell/extensions/") + name;
    QDir().mkpath(target);
    const QDir source(QStringLiteral(GNOME_SHELL_EXTENSION));
    for (const QString &file : source.entryList(QDir::Files)) {
        if (!QFile::copy(source.filePath(file), target + QLatin1Char('/') + file))
            throw HarnessError(QStringLiteral("cannot copy %1").arg(source.filePath(file)));
    }
    return name;
}

QJsonObject ShellEyes::state() const {
    const QVariantList answer = call(QStringLiteral("State"), {});
    return QJsonDocument::fromJson(answer.value(0).toString().toUtf8()).object();
}

void ShellEyes::tell(const QString &method, uint number) const {
    call(method, {number});
}

QVariantList ShellEyes::call(const QString &method, const QVariantList &arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(QStringLiteral("org.gnome.Shell"),
                                                          QStringLiteral("/harness/Eyes"),
                                                          QStringLiteral("harness.Eyes"), method);
    message.setArguments(arguments);
    return bus_.call(message, QDBus::Block, callDeadlineMs).arguments();
}

} // namespace quillmender::harness
