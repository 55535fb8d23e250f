#include "desktop/wayland/kwin/TestWindowProcess.h"

#include "desktop/harness/Waiter.h"

#include <QFile>

namespace quillmender {

namespace {

harness::Command commandFor(const QString &title) {
    harness::Command command;
    command.program = QStringLiteral(QUILLMENDER_TEST_WINDOW);
    command.arguments = {title};
    command.environment = QProcessEnvironment::systemEnvironment();
    command.logFile =
        qEnvironmentVariable("HOME") + QLatin1Char('/') + title + QLatin1String(".log");
    QFile::remove(command.logFile);
    return command;
}

} // namespace

TestWindowProcess::TestWindowProcess(const QString &title) : process_(commandFor(title)) {}

QByteArrayList TestWindowProcess::written() {
    QByteArray log = process_.log();
    log.truncate(log.lastIndexOf('\n') + 1);
    const QByteArray news = log.mid(read_);
    read_ = log.size();
    QByteArrayList lines = news.split('\n');
    lines.removeAll(QByteArray());
    return lines;
}

bool TestWindowProcess::writes(const QByteArray &line) {
    const auto comes = [this, &line] {
        // The end of a longer line is another one.
        const QByteArray news = '\n' + process_.log().mid(read_);
        const qsizetype found = news.indexOf('\n' + line + '\n');
        if (found < 0)
            return false;
        read_ += found + line.size() + 1;
        return true;
    };
    return harness::becomesTrue(comes);
}

} // namespace quillmender
