#include "desktop/harness/TestApplication.h"
#include "desktop/harness/gnome/GnomeDesktopTest.h"

#include <QDir>
#include <QTemporaryDir>

#include <unistd.h>

namespace quillmender::harness {
namespace {

class GnomeServicesTest : public GnomeDesktopTest {};

// Command lines of the processes whose environment or arguments name the desktop's folder.
QStringList programsOf(const QString &folder) {
    QStringList found;
    const QDir processes(QStringLiteral("/proc"));
    for (const QString &name : processes.entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
        if (name.toLongLong() == ::getpid())
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

TEST_F(GnomeServicesTest, AllOfADesktopIsThere) {
    EXPECT_NE(::geteuid(), 0U);
    EXPECT_TRUE(desktop().accessibilityBus()->isEnabled());
    desktop().keyring()->store(QStringLiteral("s"), QStringLiteral("a"), "secret");
    EXPECT_EQ(desktop().keyring()->lookup(QStringLiteral("s"), QStringLiteral("a")), "secret");
    EXPECT_GE(desktop().portalVersion(QStringLiteral("GlobalShortcuts")), 1U);
    EXPECT_GE(desktop().portalVersion(QStringLiteral("RemoteDesktop")), 2U);
}

TEST_F(GnomeServicesTest, AccessibilityCanBeOff) {
    GnomeDesktop::Options options;
    options.shell.accessibility = false;
    startDesktop(options);
    EXPECT_FALSE(desktop().accessibilityBus()->isEnabled());
}

TEST_F(GnomeServicesTest, ArtifactsHaveAPictureAndTheShellsLog) {
    const QTemporaryDir folder;
    desktop().keepArtifacts(folder.path());
    EXPECT_FALSE(QImage(folder.filePath(QStringLiteral("screen.png"))).isNull());
    EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("gnome-shell.log"))));
}

TEST_F(GnomeServicesTest, NothingIsLeftOfADesktop) {
    QString home;
    {
        GnomeDesktop shortLived({});
        home = shortLived.folders().home();
        const auto editor = TestApplication::mousepad(shortLived);
        EXPECT_GE(programsOf(home).size(), 6);
    }
    becomesTrue([&] { return programsOf(home).isEmpty(); });
    EXPECT_EQ(programsOf(home), QStringList());
    EXPECT_FALSE(QFile::exists(home));
}

} // namespace
} // namespace quillmender::harness
