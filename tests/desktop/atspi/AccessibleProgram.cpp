#include "desktop/atspi/AccessibleProgram.h"

#include "desktop/harness/AccessibilityBus.h"
#include "desktop/harness/Waiter.h"

namespace quillmender::atspi {

namespace {

harness::Command commandOf(harness::Desktop &desktop, const QString &text,
                           const AccessibleProgram::Options &options) {
    const QString active = QStringLiteral("active");
    const QString inactive = QStringLiteral("inactive");
    harness::Command command = desktop.command(
        QStringLiteral(ACCESSIBLE_APPLICATION),
        {desktop.accessibilityBus()->address(), options.isActive ? active : inactive,
         QString::number(options.fieldRole), text, QString::number(options.selectionStart),
         QString::number(options.selectionEnd)});
    for (const auto &[start, end] : options.laterSelections)
        command.arguments += {QString::number(start), QString::number(end)};
    command.pipeOutput = true;
    return command;
}

} // namespace

AccessibleProgram::AccessibleProgram(harness::Desktop &desktop, const QString &text,
                                     const Options &options)
    : process_(commandOf(desktop, text, options)) {
    process_.readLine(harness::defaultDeadline);
}

AccessibleProgram::AccessibleProgram(harness::Desktop &desktop, const QString &text)
    : AccessibleProgram(desktop, text, Options()) {}

} // namespace quillmender::atspi
