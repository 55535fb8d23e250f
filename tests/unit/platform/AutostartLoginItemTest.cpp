#include "platform/linux/services/AutostartLoginItem.h"

#include "DesktopFolderTest.h"
#include "fakes/FakeSecrets.h"
#include "platform/linux/desktop/DesktopEntry.h"
#include "platform/none/NoneUserDefaults.h"
#include "settings/SettingsStore.h"

#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <unistd.h>

namespace quillmender {

namespace {

constexpr int deadline = 20000;
constexpr uid_t nobody = 65534;

const QString userFile =
    QStringLiteral("home/config/autostart/com.quillmender.Quillmender.desktop");
const QString systemFile = QStringLiteral("etc/autostart/com.quillmender.Quillmender.desktop");
const QByteArray enabledEntry = "[Desktop Entry]\nType=Application\nName=Q\nExec=quillmender\n";

class AutostartLoginItemTest : public DesktopFolderTest {
  protected:
    bool exists(const QString &name) const { return QFileInfo(path(name)).exists(); }

    /// What is in the folder, hidden files included.
    QStringList filesBeside(const QString &name) const {
        return QDir(QFileInfo(path(name)).path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    /// Runs the operation as somebody who may read the folder and not write to it.
    std::optional<QString> withoutPermission(const QString &folder,
                                             std::optional<QString> (AutostartLoginItem::*what)()) {
        constexpr auto readOnly = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                  QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
        QFile::setPermissions(path(QStringLiteral(".")), readOnly | QFile::WriteOwner);
        QFile::setPermissions(path(folder), readOnly);
        const bool isRoot = ::geteuid() == 0;
        EXPECT_TRUE(!isRoot || ::seteuid(nobody) == 0);
        const auto back = qScopeGuard([&] {
            EXPECT_TRUE(!isRoot || ::seteuid(0) == 0);
            QFile::setPermissions(path(folder), readOnly | QFile::WriteOwner);
        });
        return (item.*what)();
    }

    /// Whether another user can reach the folder for temporary files, in which the test installs.
    static bool othersMayReadHere() {
        for (QFileInfo folder(QDir::tempPath());; folder.setFile(folder.path())) {
            if (!folder.permission(QFile::ExeOther))
                return false;
            if (folder.isRoot())
                break;
        }
        return true;
    }

    AutostartLoginItem item;
};

TEST_F(AutostartLoginItemTest, WithoutAFileItIsNotRegistered) {
    install();
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_FALSE(exists(QStringLiteral("home/config")));
}

TEST_F(AutostartLoginItemTest, RegisteringMakesAFileAndUnregisteringRemovesIt) {
    install();
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    const QByteArray program = path(QStringLiteral("bin/quillmender")).toUtf8();
    EXPECT_EQ(read(userFile).toStdString(), ("[Desktop Entry]\nType=Application\nName=Quillmender\n"
                                             "Icon=com.quillmender.Quillmender\nTryExec=" +
                                             program + "\nExec=" + program +
                                             "\nTerminal=false\nStartupNotify=false\n"
                                             "X-GNOME-Autostart-enabled=true\n")
                                                .toStdString());
    EXPECT_EQ(filesBeside(userFile).size(), 1);
    EXPECT_TRUE(QFile::permissions(path(userFile)) & QFile::ReadOther);

    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(filesBeside(userFile), QStringList());
}

TEST_F(AutostartLoginItemTest, ADesktopsToolCanSwitchItOff) {
    install();
    for (const char *line : {"Hidden=true\n", "Hidden=1\n", "X-GNOME-Autostart-enabled=false\n"}) {
        const QByteArray file = enabledEntry + line;
        write(userFile, file);
        EXPECT_EQ(item.status(), LoginItemStatus::requiresApproval) << line;
        EXPECT_EQ(item.registerItem(), std::nullopt);
        EXPECT_EQ(read(userFile), file) << "the user's switch stays";
        EXPECT_EQ(item.status(), LoginItemStatus::requiresApproval) << line;
    }
    write(userFile, "[Desktop Entry]\nHidden=true\n");
    EXPECT_EQ(item.status(), LoginItemStatus::requiresApproval) << "all that some tools write";
    write(userFile, enabledEntry + "Hidden=false\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    // Off and on again is the way out where there is no such tool.
    write(userFile, enabledEntry + "Hidden=true\n");
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
}

TEST_F(AutostartLoginItemTest, WhatAUserWroteStays) {
    install();
    const QByteArray file = enabledEntry + "X-GNOME-Autostart-Delay=30\nOnlyShowIn=KDE;\n";
    write(userFile, file);
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(read(userFile), file);
}

TEST_F(AutostartLoginItemTest, NotInstalledIsNotFound) {
    EXPECT_EQ(item.status(), LoginItemStatus::notFound);
    const auto error = item.registerItem();
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->contains(QStringLiteral("not installed"))) << error->toStdString();
    EXPECT_FALSE(exists(QStringLiteral("home/config")));
    write(userFile, enabledEntry);
    EXPECT_EQ(item.status(), LoginItemStatus::notFound);
    EXPECT_EQ(item.unregisterItem(), std::nullopt) << "a leftover can be removed";
    EXPECT_FALSE(exists(userFile));
}

TEST_F(AutostartLoginItemTest, AFileThatStartsNothingIsWrittenAnew) {
    install();
    for (const char *file : {"", "no entry", "[Desktop Entry]\nExec=/gone/quillmender\n",
                             "[Desktop Entry]\nTryExec=/gone\nExec=quillmender\n"}) {
        write(userFile, file);
        EXPECT_EQ(item.status(), LoginItemStatus::notRegistered) << file;
        EXPECT_EQ(item.registerItem(), std::nullopt);
        EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    }
}

TEST_F(AutostartLoginItemTest, AdministratorsFileCountsUntilTheUserHasOne) {
    install();
    write(systemFile, enabledEntry);
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_FALSE(exists(userFile)) << "nothing to add";
    write(userFile, enabledEntry + "Hidden=true\n");
    EXPECT_EQ(item.status(), LoginItemStatus::requiresApproval);
}

TEST_F(AutostartLoginItemTest, UnregisteringHidesAnAdministratorsFile) {
    install();
    write(systemFile, enabledEntry);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_TRUE(DesktopEntry::read(path(userFile))->isTrue(QStringLiteral("Hidden")));
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(read(systemFile), enabledEntry);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    EXPECT_FALSE(DesktopEntry::read(path(userFile))->isTrue(QStringLiteral("Hidden")));
}

TEST_F(AutostartLoginItemTest, AdministratorsRefusalIsNotTheUsers) {
    install();
    write(systemFile, enabledEntry + "Hidden=true\n");
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_FALSE(exists(userFile));
}

TEST_F(AutostartLoginItemTest, ALinkIsReplacedAndItsTargetStays) {
    install();
    const QString target = write(QStringLiteral("elsewhere.desktop"), "[Desktop Entry]\n");
    QDir().mkpath(path(QStringLiteral("home/config/autostart")));
    ASSERT_TRUE(QFile::link(target, path(userFile)));
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_FALSE(QFileInfo(path(userFile)).isSymLink());
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    EXPECT_EQ(read(QStringLiteral("elsewhere.desktop")), "[Desktop Entry]\n");

    // As users do who link the application's own entry.
    QFile::remove(path(userFile));
    const QString own =
        path(QStringLiteral("usr/applications/com.quillmender.Quillmender.desktop"));
    ASSERT_TRUE(QFile::link(own, path(userFile)));
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_TRUE(QFile::exists(own));
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);

    ASSERT_TRUE(QFile::link(path(QStringLiteral("nowhere")), path(userFile)));
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);
    EXPECT_FALSE(exists(QStringLiteral("nowhere")));
}

TEST_F(AutostartLoginItemTest, AFolderThatCannotBeWrittenIsAnError) {
    if (!othersMayReadHere())
        GTEST_SKIP() << "another user cannot read the folder for temporary files";
    install();
    write(userFile, "no entry");
    const auto error = withoutPermission(QStringLiteral("home/config/autostart"),
                                         &AutostartLoginItem::registerItem);
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->contains(path(userFile))) << error->toStdString();
    EXPECT_TRUE(error->endsWith(QStringLiteral("Permission denied"))) << error->toStdString();
    EXPECT_EQ(read(userFile), "no entry");
    EXPECT_EQ(filesBeside(userFile).size(), 1);

    const auto second = withoutPermission(QStringLiteral("home/config/autostart"),
                                          &AutostartLoginItem::unregisterItem);
    ASSERT_TRUE(second);
    EXPECT_TRUE(second->endsWith(QStringLiteral("Permission denied"))) << second->toStdString();
    EXPECT_TRUE(exists(userFile));
}

TEST_F(AutostartLoginItemTest, AFolderThatCannotBeMadeIsAnError) {
    if (!othersMayReadHere())
        GTEST_SKIP() << "another user cannot read the folder for temporary files";
    install();
    QDir().mkpath(path(QStringLiteral("home/config")));
    const auto refused =
        withoutPermission(QStringLiteral("home/config"), &AutostartLoginItem::registerItem);
    ASSERT_TRUE(refused);
    EXPECT_TRUE(refused->endsWith(QStringLiteral("Permission denied"))) << refused->toStdString();

    write(QStringLiteral("home/config/autostart"), "a file");
    const auto error = item.registerItem();
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->endsWith(QStringLiteral("File exists"))) << error->toStdString();
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_EQ(read(QStringLiteral("home/config/autostart")), "a file");
}

TEST_F(AutostartLoginItemTest, AFolderOfThatNameIsAnError) {
    install();
    QDir().mkpath(path(userFile));
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
    EXPECT_TRUE(item.registerItem());
    EXPECT_TRUE(item.unregisterItem());
    EXPECT_EQ(filesBeside(userFile).size(), 1) << "and nothing is left beside it";
}

TEST_F(AutostartLoginItemTest, AProgramThatNoEntryCanNameIsAnError) {
    const QString program = writeProgram(QStringLiteral("a=b/quillmender"));
    write(QStringLiteral("usr/applications/com.quillmender.Quillmender.desktop"),
          "[Desktop Entry]\nExec=" + program.toUtf8() + "\n");
    EXPECT_TRUE(item.registerItem());
    EXPECT_FALSE(exists(userFile));
}

TEST_F(AutostartLoginItemTest, ADesktopStartsItFromAnyFolder) {
    const QString program =
        writeProgram(QStringLiteral("opt/a \"b\" $c `d` \\e 'f' (g) 50%h %/q;#&"));
    QString quoted = program;
    for (const QChar special : QStringLiteral("\\\"$`"))
        quoted.replace(special, QStringLiteral("\\") + special);
    quoted.replace(u'%', QStringLiteral("%%"));
    write(QStringLiteral("usr/applications/com.quillmender.Quillmender.desktop"),
          DesktopEntry::format(
              {{QStringLiteral("Exec"), u'"' + quoted + QStringLiteral("\" --from-entry %U")}}));
    ASSERT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), LoginItemStatus::enabled);

    // Another implementation of desktop entries reads what was written.
    QProcess launcher;
    launcher.start(QStringLiteral("/usr/bin/gio"), {QStringLiteral("launch"), path(userFile)});
    ASSERT_TRUE(launcher.waitForFinished(deadline)) << launcher.errorString().toStdString();
    EXPECT_EQ(launcher.exitCode(), 0) << launcher.readAllStandardError().toStdString();
    const QString record = program + QStringLiteral(".arguments");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(record); }, deadline));
    QFile arguments(record);
    ASSERT_TRUE(arguments.open(QIODevice::ReadOnly));
    EXPECT_EQ(arguments.readAll(), "--from-entry\n");

    QFile::remove(program);
    write(QStringLiteral("usr/applications/com.quillmender.Quillmender.desktop"), enabledEntry);
    writeProgram(QStringLiteral("bin/quillmender"));
    EXPECT_EQ(item.status(), LoginItemStatus::notRegistered) << "it starts nothing any more";
}

/// The settings' toggle and its status line on real files.
class AutostartToggleTest : public AutostartLoginItemTest {
  protected:
    SettingsStore &store() {
        if (!store_)
            store_ = std::make_unique<SettingsStore>(defaults_, secrets_, item);
        return *store_;
    }

    QString message() { return store().launchAtLoginStatusMessage().value_or(QString()); }

  private:
    NoneUserDefaults defaults_;
    fakes::FakeSecrets secrets_{fakes::makeCallLog()};
    std::unique_ptr<SettingsStore> store_;
};

TEST_F(AutostartToggleTest, OnAndOff) {
    install();
    EXPECT_FALSE(store().launchAtLoginEnabled());
    EXPECT_EQ(store().launchAtLoginStatusMessage(), std::nullopt);
    store().setLaunchAtLoginEnabled(true);
    EXPECT_EQ(message(), QStringLiteral("Quillmender will open automatically when you log in."));
    EXPECT_TRUE(exists(userFile));
    store().setLaunchAtLoginEnabled(false);
    EXPECT_EQ(store().launchAtLoginStatusMessage(), std::nullopt);
    EXPECT_FALSE(exists(userFile));
}

TEST_F(AutostartToggleTest, StaysOnUntilTheNextRefreshWhenTheDesktopHasSwitchedItOff) {
    install();
    write(userFile, enabledEntry + "Hidden=true\n");
    const QString approval = QStringLiteral(
        "macOS needs approval in Login Items before Quillmender can start automatically.");
    EXPECT_FALSE(store().launchAtLoginEnabled());
    EXPECT_EQ(message(), approval);
    store().setLaunchAtLoginEnabled(true);
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_EQ(message(), approval);
    store().refreshLaunchAtLoginState();
    EXPECT_FALSE(store().launchAtLoginEnabled());
    EXPECT_EQ(message(), approval);
}

TEST_F(AutostartToggleTest, SpringsBackWhenTheFileCannotBeRemoved) {
    install();
    write(systemFile, enabledEntry);
    // The name is taken, so that nothing can say no to the administrator's file.
    write(QStringLiteral("home/config/autostart"), "a file");
    EXPECT_TRUE(store().launchAtLoginEnabled());
    store().setLaunchAtLoginEnabled(false);
    EXPECT_TRUE(store().launchAtLoginEnabled());
    EXPECT_TRUE(message().endsWith(QStringLiteral("File exists"))) << message().toStdString();
}

TEST_F(AutostartToggleTest, SpringsBackWhenTheProgramIsNotInstalled) {
    EXPECT_EQ(message(), QStringLiteral("Launch at Login is unavailable for this build."));
    store().setLaunchAtLoginEnabled(true);
    EXPECT_FALSE(store().launchAtLoginEnabled());
    EXPECT_TRUE(message().contains(QStringLiteral("not installed"))) << message().toStdString();
    EXPECT_FALSE(exists(QStringLiteral("home/config")));
}

TEST_F(AutostartToggleTest, ARefreshChangesNoFile) {
    install();
    store().refreshLaunchAtLoginState();
    EXPECT_FALSE(exists(QStringLiteral("home/config")));
    for (const char *line : {"", "Hidden=true\n", "TryExec=/gone\n"}) {
        write(userFile, enabledEntry + line);
        const QDateTime before = QFileInfo(path(userFile)).lastModified();
        store().refreshLaunchAtLoginState();
        EXPECT_EQ(read(userFile), enabledEntry + line);
        EXPECT_EQ(QFileInfo(path(userFile)).lastModified(), before);
    }
}

} // namespace
} // namespace quillmender
