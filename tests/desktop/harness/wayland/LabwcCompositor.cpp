#include "desktop/harness/wayland/LabwcCompositor.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/wayland/HeadlessWlroots.h"

#include <QDir>
#include <QFile>

#include <csignal>

namespace quillmender::harness {

namespace {

constexpr QSize wlrootsScreen(1280, 720);

} // namespace

LabwcCompositor::LabwcCompositor(const Options &options, const Place &place)
    : Compositor(place, wlrootsScreen, QStringLiteral("labwc")) {
    if (!qFuzzyCompare(options.scale, 1))
        throw HarnessError(QStringLiteral("labwc has no setting for a scale"));
    const QString folder = place.folders.config() + QStringLiteral("/labwc");
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/rc.xml"));
    if (!file.open(QIODevice::WriteOnly))
        throw HarnessError(QStringLiteral("cannot write %1").arg(file.fileName()));
    file.write(QStringLiteral("<?xml version=\"1.0\"?>\n"
                              "<labwc_config>\n"
                              "  <keyboard><default/>%1</keyboard>\n"
                              "  <focus><followMouse>no</followMouse></focus>\n"
                              "</labwc_config>\n")
                   .arg(options.configuration)
                   .toUtf8());
    file.close();
    setVariable("XDG_CURRENT_DESKTOP", QStringLiteral("labwc:wlroots"));
    QMap<QString, QString> variables = headlessWlroots();
    variables.insert(this->variables());
    process_ = std::make_unique<ChildProcess>(
        Command{.program = QStringLiteral("labwc"),
                .arguments = {QStringLiteral("-d"), QStringLiteral("-C"), folder,
                              QStringLiteral("-s"), announcement()},
                .environment = environmentWith(variables),
                .logFile = place.folders.log(QStringLiteral("labwc")),
                .input = {},
                .pipeOutput = false,
                .workingDirectory = place.folders.home()});
    waitForAnnouncement(*process_);
    if (!options.xwayland)
        hideVariable("DISPLAY");
    user_ = std::make_unique<WaylandUser>(socketPath(), screen(), options.layouts);
    windows_ = std::make_unique<ToplevelWindows>(socketPath());
}

void LabwcCompositor::reload() {
    ::kill(static_cast<pid_t>(process_->pid()), SIGHUP);
}

} // namespace quillmender::harness
