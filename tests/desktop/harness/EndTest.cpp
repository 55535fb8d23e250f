#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/TestApplication.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <gmock/gmock.h>

namespace quillmender::harness {
namespace {

class EndTest : public DesktopTest {};

// Command lines of the processes whose environment or arguments name the desktop's folder.
QStringList processesOf(const QString &folder) {
    QStringList found;
    const QDir processes(QStringLiteral("/proc"));
    for (const QString &name : processes.entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
        if (name.toLongLong() == QCoreApplication::applicationPid())
            continue;
        QFile environment(QStringLiteral("/proc/%1/environ").arg(name));
        QFile arguments(QStringLiteral("/proc/%1/cmdline").arg(name));
        if (!environment.open(QIODevice::ReadOnly) || !arguments.open(QIODevice::ReadOnly))
            continue;
        const QByteArray command = arguments.readAll();
        if (environment.readAll().contains(folder.toUtf8()) || command.contains(folder.toUtf8()))
            found.append(QString::fromUtf8(command).replace(QChar(0), u' '));
    }
    return found;
}

TEST_F(EndTest, NothingIsLeftOfADesktop) {
    QString home;
    {
        Desktop shortLived;
        home = shortLived.folders().home();
        const auto mousepad = TestApplication::mousepad(shortLived);
        EXPECT_GE(processesOf(home).size(), 6);
    }
    waitUntil([&] { return processesOf(home).isEmpty(); },
              QStringLiteral("every process of the desktop ends"));
    EXPECT_FALSE(QFile::exists(home));
}

TEST_F(EndTest, NothingIsLeftOfATestThatDied) {
    const QTemporaryDir folder;
    ChildProcess casualty({.program = QStringLiteral(HARNESS_CASUALTY),
                           .arguments = {},
                           .environment = QProcessEnvironment::systemEnvironment(),
                           .logFile = folder.filePath(QStringLiteral("casualty.log")),
                           .input = {},
                           .pipeOutput = true,
                           .workingDirectory = {}});
    const QString line = QString::fromUtf8(casualty.readLine(defaultDeadline));
    const QString home = line.section(u' ', 0, 0);
    ASSERT_FALSE(home.isEmpty());
    waitUntil([&] { return processesOf(home).isEmpty() && !QFile::exists(home); },
              QStringLiteral("every process of the desktop and its folder are gone"));
    EXPECT_EQ(casualty.exitCode(), std::nullopt);
}

TEST_F(EndTest, SuspendedProgramIsEndedToo) {
    auto mousepad = TestApplication::mousepad(desktop());
    mousepad.process().suspend();
    mousepad.process().end();
    EXPECT_FALSE(mousepad.process().isRunning());
}

TEST_F(EndTest, WaitSaysWhatDidNotHappen) {
    using std::chrono_literals::operator""ms;
    EXPECT_FALSE(becomesTrue([] { return false; }, 20ms));
    setTimeoutObserver({});
    try {
        waitUntil([] { return false; }, QStringLiteral("the impossible"), 20ms);
        FAIL();
    } catch (const HarnessError &error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("the impossible"));
    }
}

} // namespace
} // namespace quillmender::harness
