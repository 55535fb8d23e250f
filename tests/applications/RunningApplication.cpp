#include "applications/RunningApplication.h"

#include "desktop/harness/Waiter.h"

#include <unistd.h>

namespace quillmender::applications {

using namespace std::chrono_literals;

namespace {

// A browser or an office suite, for the first time in a new home, on a busy machine.
constexpr auto startDeadline = 240s;

} // namespace

RunningApplication::RunningApplication(harness::AnyDesktop &desktop,
                                       const harness::Command &command, const QString &title)
    : desktop_(desktop),
      title_(title),
      process_(command) {
    harness::waitUntil(
        [&] {
            window_ = newestWindow();
            return window_ != 0 && desktop.windows().active() == window_;
        },
        QStringLiteral("%1 has an active window").arg(command.program), startDeadline);
}

harness::WindowId RunningApplication::newestWindow() const {
    harness::WindowId found = 0;
    for (const harness::WindowId window : desktop_.windows().all()) {
        const QString title = desktop_.windows().title(window);
        const auto process = static_cast<pid_t>(desktop_.windows().processId(window));
        // Tk does not tell whose window it is.
        const bool isOurs = process > 0 ? ::getpgid(process) == process_.pid()
                                        : !title_.isEmpty() && title.contains(title_);
        if (isOurs && title.contains(title_) && desktop_.windows().isViewable(window))
            found = window;
    }
    return found;
}

QRect RunningApplication::geometry() const {
    return desktop_.windows().geometry(window_);
}

void RunningApplication::activate() {
    desktop_.windows().activate(window_);
}

} // namespace quillmender::applications
