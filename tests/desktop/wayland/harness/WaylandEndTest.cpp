#include "desktop/harness/HarnessError.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/harness/wayland/WaylandDesktopTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

namespace quillmender::harness {
namespace {

class WaylandEndTest : public EachCompositorTest {};

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

TEST_P(WaylandEndTest, NothingIsLeftOfADesktop) {
    QString home;
    {
        WaylandDesktop shortLived({.kind = GetParam()});
        home = shortLived.folders().home();
        const auto mousepad = TestApplication::mousepad(shortLived);
        EXPECT_GE(processesOf(home).size(), 6);
    }
    waitUntil([&] { return processesOf(home).isEmpty(); },
              QStringLiteral("every process of the desktop ends"));
    EXPECT_FALSE(QFile::exists(home));
}

TEST_P(WaylandEndTest, NothingIsLeftOfATestThatDied) {
    const QTemporaryDir folder;
    ChildProcess casualty({.program = QStringLiteral(WAYLAND_CASUALTY),
                           .arguments = {QString::number(static_cast<int>(GetParam()))},
                           .environment = QProcessEnvironment::systemEnvironment(),
                           .logFile = folder.filePath(QStringLiteral("casualty.log")),
                           .input = {},
                           .pipeOutput = true,
                           .workingDirectory = {}});
    const QString home = QString::fromUtf8(casualty.readLine(defaultDeadline));
    ASSERT_FALSE(home.isEmpty());
    waitUntil([&] { return processesOf(home).isEmpty() && !QFile::exists(home); },
              QStringLiteral("every process of the desktop and its folder are gone"));
    EXPECT_EQ(casualty.exitCode(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(On, WaylandEndTest, everyCompositor(), compositorName);

} // namespace
} // namespace quillmender::harness
