#include "applications/Catalog.h"

#include "desktop/harness/HarnessError.h"

#include <QDir>
#include <QFileInfo>

namespace quillmender::applications {

const QList<Application> &catalog() {
    static const QList<Application> all =
        editors() + toolkitFields() + browsers() + office() + mailComposers() + terminals();
    return all;
}

Application offTheBus(Application application) {
    application.id += QStringLiteral("-off");
    application.field += QStringLiteral(", accessibility off");
    application.isOffTheBus = true;
    return application;
}

QString writeHomeFile(const harness::Desktop &desktop, const QString &name,
                      const QByteArray &contents) {
    const QString path = desktop.folders().home() + QLatin1Char('/') + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        throw harness::HarnessError(QStringLiteral("cannot write %1").arg(path));
    return path;
}

} // namespace quillmender::applications
