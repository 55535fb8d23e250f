#include "desktop/harness/wayland/Compositor.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/wayland/GrimScreenshot.h"
#include "desktop/harness/wayland/KWinCompositor.h"
#include "desktop/harness/wayland/LabwcCompositor.h"
#include "desktop/harness/wayland/SwayCompositor.h"

#include <QFile>
#include <QStandardPaths>

namespace quillmender::harness {

const char *nameOf(CompositorKind kind) {
    switch (kind) {
    case CompositorKind::sway:
        return "sway";
    case CompositorKind::labwc:
        return "labwc";
    case CompositorKind::kwin:
        return "kwin";
    }
    return "";
}

std::unique_ptr<Compositor> Compositor::start(CompositorKind kind, const Options &options,
                                              const Place &place) {
    switch (kind) {
    case CompositorKind::sway:
        return std::make_unique<SwayCompositor>(options, place);
    case CompositorKind::labwc:
        return std::make_unique<LabwcCompositor>(options, place);
    case CompositorKind::kwin:
        return std::make_unique<KWinCompositor>(options, place);
    }
    return nullptr;
}

QStringList Compositor::missingPrograms(CompositorKind kind) {
    QStringList programs{QStringLiteral("grim")};
    switch (kind) {
    case CompositorKind::sway:
        programs.append(QStringLiteral("sway"));
        break;
    case CompositorKind::labwc:
        programs.append(QStringLiteral("labwc"));
        break;
    case CompositorKind::kwin:
        programs += {QStringLiteral("kwin_wayland"), QStringLiteral("kbuildsycoca6"),
                     QStringLiteral("sway")};
        break;
    }
    programs.removeIf(
        [](const QString &program) { return !QStandardPaths::findExecutable(program).isEmpty(); });
    return programs;
}

Compositor::Compositor(const Place &place, QSize screen, const QString &name)
    : place_(place),
      screen_(screen),
      announced_(place.folders.runtime() + QLatin1Char('/') + name + QStringLiteral(".displays")) {
    const QString script =
        place.folders.runtime() + QLatin1Char('/') + name + QStringLiteral("-announce");
    QFile file(script);
    if (!file.open(QIODevice::WriteOnly))
        throw HarnessError(QStringLiteral("cannot write %1").arg(script));
    file.write(QStringLiteral("printf '%s\\n%s\\n' \"$WAYLAND_DISPLAY\" \"$DISPLAY\" >'%1.new'\n"
                              "mv '%1.new' '%1'\n")
                   .arg(announced_)
                   .toUtf8());
    announcement_ = QStringLiteral("sh %1").arg(script);
}

Compositor::~Compositor() = default;

QString Compositor::socketPath() const {
    return place_.folders.runtime() + QLatin1Char('/') +
           variables_.value(QStringLiteral("WAYLAND_DISPLAY"));
}

QImage Compositor::screenshot() {
    return takeGrimScreenshot(place_.folders, environmentWith(variables_));
}

QProcessEnvironment Compositor::environmentWith(const QMap<QString, QString> &more) const {
    QProcessEnvironment environment = place_.environment;
    for (auto each = more.cbegin(); each != more.cend(); ++each)
        environment.insert(each.key(), each.value());
    return environment;
}

void Compositor::waitForAnnouncement(ChildProcess &process) {
    QFile file(announced_);
    waitUntil(
        [&] {
            if (!process.isRunning())
                throw HarnessError(QStringLiteral("the compositor ended: %1")
                                       .arg(QString::fromUtf8(process.log())));
            return file.open(QIODevice::ReadOnly);
        },
        QStringLiteral("the compositor is up"));
    setVariable("WAYLAND_DISPLAY", QString::fromUtf8(file.readLine().trimmed()));
    const QByteArray xDisplay = file.readLine().trimmed();
    if (!xDisplay.isEmpty())
        setVariable("DISPLAY", QString::fromUtf8(xDisplay));
}

} // namespace quillmender::harness
