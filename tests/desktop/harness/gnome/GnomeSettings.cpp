#include "desktop/harness/gnome/GnomeSettings.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QProcess>

namespace quillmender::harness {

void setGnomeSetting(const QProcessEnvironment &environment, const QString &schema,
                     const QString &key, const QString &value) {
    QProcess tool;
    tool.setProcessEnvironment(environment);
    tool.start(QStringLiteral("gsettings"), {QStringLiteral("set"), schema, key, value});
    if (!tool.waitForFinished(static_cast<int>(defaultDeadline.count())) || tool.exitCode() != 0) {
        throw HarnessError(QStringLiteral("cannot set %1 %2: %3")
                               .arg(schema, key, QString::fromUtf8(tool.readAllStandardError())));
    }
}

} // namespace quillmender::harness
