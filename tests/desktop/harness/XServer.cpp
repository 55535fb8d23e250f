#include "desktop/harness/XServer.h"

#include "desktop/harness/Waiter.h"

namespace quillmender::harness {

XServer::XServer(const Options &options, const QProcessEnvironment &environment,
                 const QString &logFile)
    : process_(
          {.program = QStringLiteral("Xvfb"),
           .arguments =
               {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                QStringLiteral("0"),
                QStringLiteral("%1x%2x24").arg(options.size.width()).arg(options.size.height()),
                QStringLiteral("-dpi"), QString::number(options.dotsPerInch),
                QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-noreset")},
           .environment = environment,
           .logFile = logFile,
           .input = {},
           .pipeOutput = true,
           .workingDirectory = {}}),
      display_(QLatin1Char(':') + QString::fromLatin1(process_.readLine(defaultDeadline))) {}

} // namespace quillmender::harness
