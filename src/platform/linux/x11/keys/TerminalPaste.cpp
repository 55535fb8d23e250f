#include "platform/linux/x11/keys/TerminalPaste.h"

#include "platform/linux/terminal/ProcessTable.h"
#include "platform/linux/terminal/TerminalForeground.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/selection/X11LentText.h"
#include "platform/linux/x11/windows/WindowProcess.h"

#include <QPointer>

namespace quillmender::x11 {

namespace {

Obstacle isTerminalStopped(X11Connection &connection, xcb_window_t window) {
    if (isStopped(processOfClient(connection, window)))
        return QStringLiteral("the terminal is stopped");
    return std::nullopt;
}

} // namespace

QCoro::Task<Obstacle> lendToTerminal(X11Connection &connection, std::shared_ptr<X11LentText> text,
                                     xcb_window_t window) {
    const auto takesLineEnds = [connection = QPointer(&connection), window] {
        // What a window says of its process may be about another machine.
        const qint64 emulator = connection ? processOfClient(*connection, window) : 0;
        return emulator != 0 && hasEditorsOnly(emulator);
    };
    if (Obstacle stopped = isTerminalStopped(connection, window))
        co_return stopped;
    co_return co_await text->lendToTerminal(takesLineEnds);
}

Obstacle forbidsTerminalPaste(X11Connection &connection, const X11LentText &text,
                              xcb_window_t window) {
    if (!text.isLentToTerminal())
        return QStringLiteral("somebody else took a selection");
    return isTerminalStopped(connection, window);
}

} // namespace quillmender::x11
