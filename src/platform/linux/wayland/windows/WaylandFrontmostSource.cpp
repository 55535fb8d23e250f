#include "platform/linux/wayland/windows/WaylandFrontmostSource.h"

#include "platform/linux/terminal/ProcessTable.h"
#include "platform/linux/wayland/windows/SourceApplications.h"

namespace quillmender::wayland {

RunningApplicationRef WaylandFrontmostSource::application() const {
    return applications_.frontmost();
}

bool WaylandFrontmostSource::isTerminal() const {
    const auto application = applications_.frontmost();
    return application && isTerminalWindow(*application);
}

bool WaylandFrontmostSource::isTerminalWindow(const WaylandRunningApplication &application) const {
    const QString &appId = application.toplevel().appId;
    // A terminal can be told to give its window any name.
    const qint64 process = application.processId();
    const QString program = process > 0 ? QString::fromLocal8Bit(programOf(process)) : QString();
    return terminals_.isTerminal(appId, appId.section(u'.', -1)) ||
           terminals_.isTerminal(program, {});
}

QCoro::Task<std::optional<QString>> WaylandFrontmostSource::primarySelection() {
    if (!readPrimary_ || !applications_.frontmost())
        co_return std::nullopt;
    const ReadPrimary read = readPrimary_; // it may outlive this
    co_return co_await read();
}

} // namespace quillmender::wayland
