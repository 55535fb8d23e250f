#include "platform/linux/desktop/SettingsPages.h"

#include "platform/linux/desktop/AutostartFolder.h"
#include "platform/linux/desktop/DetachedProgram.h"

#include <QDir>
#include <QStandardPaths>

#include <array>
#include <string_view>

namespace quillmender::settingsPages {

namespace {

struct Row {
    const char *desktop; ///< as in XDG_CURRENT_DESKTOP
    DesktopPage page;
    const char *program;
    const char *argument = nullptr;
};

using enum DesktopPage;

// Of several rows for one desktop and page the first whose program is installed counts.
constexpr std::array rows{
    Row{"GNOME", loginItems, "gnome-session-properties"},
    Row{"GNOME", loginItems, "gnome-tweaks"},
    Row{"GNOME", loginItems, "gnome-control-center", "applications"},
    Row{"GNOME", accessibility, "gnome-control-center", "universal-access"},
    Row{"KDE", loginItems, "systemsettings", "kcm_autostart"},
    Row{"KDE", loginItems, "systemsettings5", "kcm_autostart"},
    Row{"KDE", accessibility, "systemsettings", "kcm_access"},
    Row{"KDE", accessibility, "systemsettings5", "kcm_access"},
    Row{"XFCE", loginItems, "xfce4-session-settings"},
    Row{"XFCE", accessibility, "xfce4-accessibility-settings"},
    Row{"MATE", loginItems, "mate-session-properties"},
    Row{"MATE", accessibility, "mate-at-properties"},
    Row{"X-Cinnamon", loginItems, "cinnamon-settings", "startup"},
    Row{"X-Cinnamon", accessibility, "cinnamon-settings", "accessibility"},
    Row{"LXQt", loginItems, "lxqt-config-session"},
};

QStringList rowCommand(const Row &row) {
    const QString program = QStandardPaths::findExecutable(QString::fromLatin1(row.program));
    if (program.isEmpty())
        return {};
    QStringList command{program};
    if (row.argument)
        command.append(QString::fromLatin1(row.argument));
    return command;
}

QStringList folderCommand() {
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    const QString folder = autostartFolder();
    if (opener.isEmpty() || !QDir().mkpath(folder))
        return {};
    return {opener, folder};
}

} // namespace

QStringList command(DesktopPage page) {
    // From the most special name to the most general one, as in "Budgie:GNOME".
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    for (const QString &desktop : desktops) {
        for (const Row &row : rows) {
            if (row.page != page ||
                desktop.compare(QLatin1String(row.desktop), Qt::CaseInsensitive) != 0)
                continue;
            const QStringList found = rowCommand(row);
            if (!found.isEmpty())
                return found;
        }
    }
    return page == loginItems ? folderCommand() : QStringList();
}

bool open(DesktopPage page) {
    return startDetached(command(page));
}

bool open(SettingsPage page) {
    switch (page) {
    case SettingsPage::accessibility:
        return open(DesktopPage::accessibility);
    }
    return false;
}

} // namespace quillmender::settingsPages
