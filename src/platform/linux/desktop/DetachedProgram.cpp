#include "platform/linux/desktop/DetachedProgram.h"

#include "platform/linux/desktop/CoreFiles.h"

#include <QDir>
#include <QProcess>

#include <unistd.h>

namespace quillmender {

namespace {

constexpr int deadlineMs = 5000;

// Runs between fork and exec. The first child ends at once, so that the program is nobody's child.
void detach() {
    ::setsid();
    if (::_Fork() != 0)
        ::_exit(0);
    restoreCoreFiles();
}

} // namespace

// QProcess::startDetached() leaves out the function that runs before the program.
bool startDetached(QStringList command) {
    if (command.isEmpty())
        return false;
    QProcess process;
    process.setProgram(command.takeFirst());
    process.setArguments(command);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setWorkingDirectory(QDir::homePath());
    process.setChildProcessModifier(detach);
    process.start();
    const bool isStarted = process.waitForStarted(deadlineMs);
    process.waitForFinished(deadlineMs);
    return isStarted;
}

} // namespace quillmender
