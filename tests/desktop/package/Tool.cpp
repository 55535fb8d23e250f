#include "desktop/package/Tool.h"

#include "desktop/harness/HarnessError.h"

#include <QProcess>

namespace quillmender {

namespace {
constexpr int deadlineMs = 120000;
} // namespace

ToolResult runTool(const QString &program, const QStringList &arguments,
                   const QProcessEnvironment &environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(deadlineMs) || process.exitStatus() != QProcess::NormalExit)
        throw harness::HarnessError(QStringLiteral("%1: %2").arg(program, process.errorString()));
    return {.exitCode = process.exitCode(), .output = process.readAll()};
}

QByteArray requireTool(const QString &program, const QStringList &arguments) {
    const ToolResult result = runTool(program, arguments);
    if (result.exitCode != 0)
        throw harness::HarnessError(
            QStringLiteral("%1 %2: %3")
                .arg(program, arguments.join(u' '), QString::fromUtf8(result.output)));
    return result.output;
}

} // namespace quillmender
