#include "platform/linux/desktop/DesktopEntry.h"

#include "DesktopFolderTest.h"
#include "platform/linux/desktop/InstalledProgram.h"

#include <QProcess>

#include <sys/stat.h>

namespace quillmender {
namespace {

const QString entryFile = QStringLiteral("usr/applications/com.quillmender.Quillmender.desktop");

class DesktopEntryTest : public DesktopFolderTest {
  protected:
    DesktopEntry entry(const QByteArray &lines) {
        return DesktopEntry::read(write(QStringLiteral("x.desktop"), "[Desktop Entry]\n" + lines))
            .value();
    }
};

TEST_F(DesktopEntryTest, ReadsItsGroupOnly) {
    const auto found = DesktopEntry::read(write(QStringLiteral("x.desktop"),
                                                "# A comment\n[Other]\nName=No\n[Desktop Entry]\r\n"
                                                "#Name=No\nName = Yes \r\n=No\nPlain\n"
                                                "[Desktop Action a]\nName=No\nExec=no\n"));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->string(QStringLiteral("Name")), QStringLiteral("Yes"));
    EXPECT_EQ(found->string(QStringLiteral("Exec")), std::nullopt);
}

TEST_F(DesktopEntryTest, IsAbsentWhereThereIsNone) {
    EXPECT_FALSE(DesktopEntry::read(path(QStringLiteral("none.desktop"))));
    EXPECT_FALSE(DesktopEntry::read(path(QStringLiteral("home"))));
    EXPECT_FALSE(DesktopEntry::read(QStringLiteral("/dev/zero")));
    EXPECT_FALSE(DesktopEntry::read(write(QStringLiteral("x.desktop"), QByteArray())));
    EXPECT_FALSE(DesktopEntry::read(write(QStringLiteral("x.desktop"), "Name=No\n")));
    const QString pipe = path(QStringLiteral("pipe.desktop"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_FALSE(DesktopEntry::read(pipe));
}

TEST_F(DesktopEntryTest, EscapesComeBack) {
    const QString value = QStringLiteral("  a\\sb\tc\nd\re\\");
    const QString name =
        write(QStringLiteral("x.desktop"), DesktopEntry::format({{QStringLiteral("Name"), value}}));
    EXPECT_EQ(DesktopEntry::read(name)->string(QStringLiteral("Name")), value);
    EXPECT_EQ(entry("Name=\\s\\q\\\n").string(QStringLiteral("Name")), QStringLiteral(" \\q\\"));
}

TEST_F(DesktopEntryTest, TruthHasTwoForms) {
    const QString key = QStringLiteral("Hidden");
    EXPECT_TRUE(entry("Hidden=true\n").isTrue(key));
    EXPECT_TRUE(entry("Hidden=1\n").isTrue(key));
    EXPECT_TRUE(entry("Hidden=false \n").isFalse(key));
    EXPECT_TRUE(entry("Hidden=0\n").isFalse(key));
    for (const char *neither : {"", "Hidden=\n", "Hidden=maybe\n"}) {
        EXPECT_FALSE(entry(neither).isTrue(key)) << neither;
        EXPECT_FALSE(entry(neither).isFalse(key)) << neither;
    }
}

TEST_F(DesktopEntryTest, CommandNeedsAnExecutable) {
    const QString program = writeProgram(QStringLiteral("bin/program"));
    write(QStringLiteral("bin/data"), "not executable");
    EXPECT_EQ(entry("Exec=program -x %u\n").command(),
              QStringList({program, QStringLiteral("-x")}));
    EXPECT_EQ(entry("TryExec=program\nExec=program\n").command(), QStringList{program});
    EXPECT_EQ(entry("TryExec=none\nExec=program\n").command(), QStringList());
    for (const char *none : {"", "Exec=\n", "Exec=data\n", "Exec=/none\n", "Exec=\"program\n"})
        EXPECT_EQ(entry(none).command(), QStringList()) << none;
}

class InstalledProgramTest : public DesktopFolderTest {};

TEST_F(InstalledProgramTest, IsWhatTheApplicationMenuStarts) {
    install();
    EXPECT_EQ(installedProgram(), QStringList{path(QStringLiteral("bin/quillmender"))});
    QFile::remove(path(QStringLiteral("bin/quillmender")));
    EXPECT_EQ(installedProgram(), QStringList());
}

TEST_F(InstalledProgramTest, TheFirstFolderCounts) {
    install();
    write(QStringLiteral("local/applications/com.quillmender.Quillmender.desktop"),
          "[Desktop Entry]\nExec=quillmender --local\n");
    EXPECT_EQ(installedProgram().value(1), QStringLiteral("--local"));
    write(QStringLiteral("home/data/applications/com.quillmender.Quillmender.desktop"),
          "[Desktop Entry]\nExec=quillmender\nHidden=true\n");
    EXPECT_EQ(installedProgram(), QStringList());
}

TEST_F(InstalledProgramTest, CanStandBesideItsEntryInAnyPrefix) {
    const QString own = writeProgram(QStringLiteral("opt/my tools/bin/quillmender"));
    EXPECT_EQ(installedProgram(own), QStringList());
    write(QStringLiteral("opt/my tools/share/applications/com.quillmender.Quillmender.desktop"),
          "[Desktop Entry]\nExec=\"" + own.toUtf8() + "\"\n");
    EXPECT_EQ(installedProgram(own), QStringList{own});
}

TEST_F(InstalledProgramTest, CanBeOnThePathUnderALastingName) {
    const QString own = writeProgram(QStringLiteral("opt/quillmender-1.0/quillmender"));
    EXPECT_EQ(installedProgram(own), QStringList());
    const QString link = path(QStringLiteral("bin/quillmender"));
    QDir().mkpath(path(QStringLiteral("bin")));
    ASSERT_TRUE(QFile::link(own, link));
    EXPECT_EQ(installedProgram(own), QStringList{link});
    // Another program of that name is not this one.
    QFile::remove(link);
    writeProgram(QStringLiteral("bin/quillmender"));
    EXPECT_EQ(installedProgram(own), QStringList());
}

} // namespace
} // namespace quillmender
