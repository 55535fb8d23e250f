#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QStringList>

namespace quillmender {

struct ToolResult {
    int exitCode = -1;
    QByteArray output; ///< of both standard output and error
};

/// Runs a program to its end. Throws HarnessError when it cannot be started, dies or never ends.
ToolResult
runTool(const QString &program, const QStringList &arguments,
        const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

/// The same; throws also when it fails. Answers the output.
QByteArray requireTool(const QString &program, const QStringList &arguments);

} // namespace quillmender
