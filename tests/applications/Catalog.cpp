#include "applications/Catalog.h"

#include "desktop/harness/HarnessError.h"

#include <QDir>
#include <QFileInfo>

namespace quillmender::applications {

namespace {

/// What people have on such desktops, one at least of each toolkit.
QList<Application> onWayland(const QList<Application> &all) {
    const QStringList native{QStringLiteral("mousepad"),
                             QStringLiteral("gnome-text-editor"),
                             QStringLiteral("featherpad"),
                             QStringLiteral("kwrite"),
                             QStringLiteral("kate"),
                             QStringLiteral("gtk3-password"),
                             QStringLiteral("gtk4-entry"),
                             QStringLiteral("gtk4-text"),
                             QStringLiteral("gtk4-password"),
                             QStringLiteral("qt5-password"),
                             QStringLiteral("qt6-line"),
                             QStringLiteral("qt6-plain"),
                             QStringLiteral("qt6-password"),
                             QStringLiteral("firefox-textarea"),
                             QStringLiteral("firefox-contenteditable"),
                             QStringLiteral("firefox-password"),
                             QStringLiteral("chromium-textarea"),
                             QStringLiteral("chromium-contenteditable"),
                             QStringLiteral("chromium-password"),
                             QStringLiteral("writer-document"),
                             QStringLiteral("writer-formatted"),
                             QStringLiteral("thunderbird-html"),
                             QStringLiteral("thunderbird-plain"),
                             QStringLiteral("konsole-shell"),
                             QStringLiteral("foot-shell"),
                             QStringLiteral("foot-vim")};
    const QStringList throughX{QStringLiteral("mousepad"), QStringLiteral("gtk3-password"),
                               QStringLiteral("tk-password"), QStringLiteral("xterm-shell"),
                               QStringLiteral("xterm-vim")};
    QList<Application> chosen;
    for (const Application &each : all) {
        if (native.contains(each.id))
            chosen += each;
    }
    for (const Application &each : all) {
        if (throughX.contains(each.id))
            chosen += throughXWayland(each);
    }
    return chosen;
}

} // namespace

QList<Application> catalog(Surroundings surroundings) {
    QList<Application> all =
        editors() + toolkitFields() + browsers() + office() + mailComposers() + terminals();
    if (surroundings != Surroundings::x11)
        return onWayland(all);
    all.removeIf([](const Application &each) { return each.name == QStringLiteral("foot"); });
    return all;
}

Application offTheBus(Application application) {
    application.id += QStringLiteral("-off");
    application.field += QStringLiteral(", accessibility off");
    application.isOffTheBus = true;
    return application;
}

Application throughXWayland(Application application) {
    application.id += QStringLiteral("-xwayland");
    application.field += QStringLiteral(", XWayland");
    application.needsX = true;
    const auto command = application.command;
    application.command = [command](harness::AnyDesktop &desktop) {
        harness::Command started = command(desktop);
        started.environment.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("x11"));
        started.environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        return started;
    };
    return application;
}

QString writeHomeFile(const harness::AnyDesktop &desktop, const QString &name,
                      const QByteArray &contents) {
    const QString path = desktop.folders().home() + QLatin1Char('/') + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        throw harness::HarnessError(QStringLiteral("cannot write %1").arg(path));
    return path;
}

} // namespace quillmender::applications
