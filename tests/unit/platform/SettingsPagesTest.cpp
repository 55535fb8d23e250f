#include "platform/linux/desktop/SettingsPages.h"

#include "DesktopFolderTest.h"
#include "platform/linux/desktop/UrlOpener.h"
#include "platform/linux/services/AutostartLoginItem.h"

namespace quillmender {
namespace {

class SettingsPagesTest : public DesktopFolderTest {
  protected:
    void installPrograms(std::initializer_list<const char *> names) {
        for (const char *name : names)
            writeProgram(QStringLiteral("bin/") + QLatin1String(name));
    }

    /// What the page of this desktop is shown with, without the folder of the program.
    QString command(const char *desktop, DesktopPage page) {
        set("XDG_CURRENT_DESKTOP", QLatin1String(desktop));
        return settingsPages::command(page).join(u' ').remove(path(QStringLiteral("bin/")));
    }

    /// The arguments of a program that was started by now, or soon.
    QByteArray argumentsOf(const QString &program) {
        const QString record = QStringLiteral("bin/%1.arguments").arg(program);
        EXPECT_TRUE(waitForFile(record));
        return read(record);
    }
};

TEST_F(SettingsPagesTest, EachDesktopHasItsOwn) {
    installPrograms({"gnome-tweaks", "gnome-control-center", "systemsettings",
                     "xfce4-session-settings", "xfce4-accessibility-settings",
                     "mate-session-properties", "mate-at-properties", "cinnamon-settings",
                     "lxqt-config-session", "xdg-open"});
    struct Expected {
        const char *desktop;
        const char *loginItems;
        const char *accessibility;
    };
    const QString folder =
        QStringLiteral("xdg-open ") + path(QStringLiteral("home/config/autostart"));
    const std::string folderCommand = folder.toStdString();
    const QList<Expected> all{
        {"GNOME", "gnome-tweaks", "gnome-control-center universal-access"},
        {"ubuntu:GNOME", "gnome-tweaks", "gnome-control-center universal-access"},
        {"KDE", "systemsettings kcm_autostart", "systemsettings kcm_access"},
        {"XFCE", "xfce4-session-settings", "xfce4-accessibility-settings"},
        {"xfce", "xfce4-session-settings", "xfce4-accessibility-settings"},
        {"MATE", "mate-session-properties", "mate-at-properties"},
        {"X-Cinnamon", "cinnamon-settings startup", "cinnamon-settings accessibility"},
        {"LXQt", "lxqt-config-session", ""},
        {"openbox", folderCommand.c_str(), ""},
        {"", folderCommand.c_str(), ""},
    };
    for (const auto &[desktop, loginItems, accessibility] : all) {
        EXPECT_EQ(command(desktop, DesktopPage::loginItems).toStdString(), loginItems) << desktop;
        EXPECT_EQ(command(desktop, DesktopPage::accessibility).toStdString(), accessibility)
            << desktop;
    }
}

TEST_F(SettingsPagesTest, TheInstalledProgramDecides) {
    EXPECT_EQ(command("GNOME", DesktopPage::loginItems), QString());
    EXPECT_EQ(command("GNOME", DesktopPage::accessibility), QString());
    installPrograms({"xdg-open"});
    EXPECT_TRUE(command("GNOME", DesktopPage::loginItems).startsWith(QStringLiteral("xdg-open")));
    installPrograms({"gnome-control-center"});
    EXPECT_EQ(command("GNOME", DesktopPage::loginItems),
              QStringLiteral("gnome-control-center applications"));
    installPrograms({"gnome-session-properties", "gnome-tweaks"});
    EXPECT_EQ(command("GNOME", DesktopPage::loginItems),
              QStringLiteral("gnome-session-properties"));
    installPrograms({"systemsettings5"});
    EXPECT_EQ(command("KDE", DesktopPage::loginItems),
              QStringLiteral("systemsettings5 kcm_autostart"));
    EXPECT_EQ(command("KDE", DesktopPage::accessibility),
              QStringLiteral("systemsettings5 kcm_access"));
}

TEST_F(SettingsPagesTest, LoginItemsAreStartedWithoutAShell) {
    installPrograms({"xdg-open"});
    set("XDG_CONFIG_HOME", path(QStringLiteral("home/a $(touch b) c")));
    AutostartLoginItem().openSystemSettings();
    EXPECT_EQ(argumentsOf(QStringLiteral("xdg-open")),
              path(QStringLiteral("home/a $(touch b) c/autostart\n")).toUtf8());
    EXPECT_TRUE(QFileInfo(path(QStringLiteral("home/a $(touch b) c/autostart"))).isDir());
}

TEST_F(SettingsPagesTest, ThePageOfTheProgramIsTheDesktops) {
    installPrograms({"systemsettings", "xdg-open"});
    set("XDG_CURRENT_DESKTOP", QStringLiteral("KDE"));
    EXPECT_TRUE(settingsPages::open(SettingsPage::accessibility));
    EXPECT_EQ(argumentsOf(QStringLiteral("systemsettings")), "kcm_access\n");
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("bin/xdg-open.arguments"))));
}

TEST_F(SettingsPagesTest, NoPageIsNoProgram) {
    installPrograms({"xdg-open"});
    EXPECT_FALSE(settingsPages::open(SettingsPage::accessibility));
    EXPECT_FALSE(settingsPages::open(DesktopPage::accessibility));
    QFile::remove(path(QStringLiteral("bin/xdg-open")));
    EXPECT_FALSE(settingsPages::open(DesktopPage::loginItems));
    EXPECT_FALSE(openUrlOnDesktop(QUrl(QStringLiteral("https://quillmender.example/"))));
}

TEST_F(SettingsPagesTest, OtherLinksGoToTheirHandler) {
    installPrograms({"xdg-open"});
    EXPECT_FALSE(openUrlOnDesktop(QUrl()));
    EXPECT_FALSE(openUrlOnDesktop(QUrl(QStringLiteral("no-scheme"))));
    EXPECT_TRUE(openUrlOnDesktop(QUrl(QStringLiteral("https://quillmender.example/a b?c='d'"))));
    EXPECT_EQ(argumentsOf(QStringLiteral("xdg-open")), "https://quillmender.example/a%20b?c='d'\n");
}

} // namespace
} // namespace quillmender
