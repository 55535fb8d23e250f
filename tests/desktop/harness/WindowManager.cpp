#include "desktop/harness/WindowManager.h"

#include "desktop/harness/Waiter.h"
#include "desktop/harness/XcbConnection.h"

namespace quillmender::harness {

WindowManager::WindowManager(XcbConnection &connection, const QProcessEnvironment &environment,
                             const QString &logFile)
    : process_({.program = QStringLiteral("openbox"),
                .arguments = {QStringLiteral("--sm-disable")},
                .environment = environment,
                .logFile = logFile,
                .input = {},
                .pipeOutput = false,
                .workingDirectory = {}}) {
    waitUntil(
        [&connection] {
            const auto check = connection.cardinal(connection.root(), "_NET_SUPPORTING_WM_CHECK");
            // The property of an earlier manager can be left over; its window cannot.
            return check && connection.cardinal(*check, "_NET_SUPPORTING_WM_CHECK") == check;
        },
        QStringLiteral("the window manager announces itself"));
}

} // namespace quillmender::harness
