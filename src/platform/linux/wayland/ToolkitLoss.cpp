#include "platform/linux/wayland/ToolkitLoss.h"

#include <QLoggingCategory>

#include <cstdlib>

namespace quillmender::wayland {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)

QtMessageHandler before = nullptr;

// The toolkit has no other word for it that comes before it ends the process.
void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    before(type, context, message);
    if (type != QtWarningMsg || !tellsOfLoss(message))
        return;
    qCWarning(log, "the compositor is gone, or has thrown the program out: it ends");
    std::_Exit(EXIT_FAILURE);
}

} // namespace

bool tellsOfLoss(const QString &warning) {
    return warning.startsWith(QStringLiteral("The Wayland connection broke")) ||
           warning.startsWith(QStringLiteral("The Wayland connection experienced a fatal error"));
}

void endWhenToolkitLosesCompositor() {
    if (!before)
        before = qInstallMessageHandler(handleMessage);
}

} // namespace quillmender::wayland
