#include "desktop/harness/wayland/GrimScreenshot.h"

#include "desktop/harness/DesktopFolders.h"
#include "desktop/harness/Waiter.h"

#include <QProcess>

namespace quillmender::harness {

QImage takeGrimScreenshot(const DesktopFolders &folders, const QProcessEnvironment &environment) {
    const QString file = folders.runtime() + QStringLiteral("/screenshot.ppm");
    QProcess grim;
    grim.setProcessEnvironment(environment);
    grim.setStandardErrorFile(folders.log(QStringLiteral("grim")), QIODevice::Append);
    grim.start(QStringLiteral("grim"), {QStringLiteral("-t"), QStringLiteral("ppm"), file});
    if (!grim.waitForFinished(static_cast<int>(defaultDeadline.count())) || grim.exitCode() != 0)
        return {};
    return QImage(file);
}

} // namespace quillmender::harness
