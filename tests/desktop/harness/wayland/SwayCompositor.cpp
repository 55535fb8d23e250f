#include "desktop/harness/wayland/SwayCompositor.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/wayland/HeadlessWlroots.h"

#include <QFile>

namespace quillmender::harness {

SwayCompositor::SwayCompositor(const Options &options, const Place &place, const QString &name)
    : Compositor(place, (QSizeF(options.screen) / options.scale).toSize(), name),
      ipc_(place.folders.runtime() + QLatin1Char('/') + name + QStringLiteral("-ipc.sock")),
      windows_(ipc_) {
    const QString configuration =
        place.folders.config() + QLatin1Char('/') + name + QStringLiteral(".conf");
    QFile file(configuration);
    if (!file.open(QIODevice::WriteOnly))
        throw HarnessError(QStringLiteral("cannot write %1").arg(configuration));
    // One exec, not exec_always: what is announced is the start, not a reload.
    file.write(QStringLiteral("xwayland %1\n"
                              "output HEADLESS-1 resolution %2x%3 position 0 0 scale %4\n"
                              "default_border none\n"
                              "focus_follows_mouse no\n"
                              "exec %5\n"
                              "%6\n")
                   .arg(options.xwayland ? QStringLiteral("force") : QStringLiteral("disable"))
                   .arg(options.screen.width())
                   .arg(options.screen.height())
                   .arg(options.scale)
                   .arg(announcement(), options.configuration)
                   .toUtf8());
    file.close();
    setVariable("SWAYSOCK", ipc_.socketPath());
    setVariable("XDG_CURRENT_DESKTOP", QStringLiteral("sway"));
    QMap<QString, QString> variables = headlessWlroots();
    variables.insert(this->variables());
    process_ = std::make_unique<ChildProcess>(
        Command{.program = QStringLiteral("sway"),
                .arguments = {QStringLiteral("--config"), configuration},
                .environment = environmentWith(variables),
                .logFile = place.folders.log(name),
                .input = {},
                .pipeOutput = false,
                .workingDirectory = place.folders.home()});
    waitForAnnouncement(*process_);
    user_ = std::make_unique<WaylandUser>(socketPath(), screen(), options.layouts);
}

void SwayCompositor::reload() {
    ipc_.run(QStringLiteral("reload"));
}

} // namespace quillmender::harness
