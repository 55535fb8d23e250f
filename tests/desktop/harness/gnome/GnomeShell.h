#pragma once

#include "desktop/harness/ChildProcess.h"
#include "desktop/harness/DesktopFolders.h"
#include "desktop/harness/SessionBus.h"
#include "desktop/harness/gnome/GnomeUser.h"
#include "desktop/harness/gnome/GnomeWindows.h"

#include <QImage>
#include <QMap>
#include <QSize>

namespace quillmender::harness {

/// A GNOME Shell that draws into memory, with a user at its keyboard and mouse, on a system bus of
/// its own that has nobody else on it. Constructed means that it takes clients, that the overview
/// is left and that it manages windows of X where it was asked to.
class GnomeShell {
  public:
    struct Options {
        /// In pixels of the screen.
        QSize screen{1280, 800};
        double scale = 1;
        /// The layouts of the user's keyboard.
        QString layouts = QStringLiteral("us");
        bool xwayland = true;
        /// What the accessibility switch of the settings says.
        bool accessibility = true;
    };

    /// Where it runs: the folders are those of its desktop, the bus its session's.
    struct Place {
        const DesktopFolders &folders;
        const QProcessEnvironment &environment;
        const SessionBus &sessionBus;
    };

    /// The programs that this machine lacks for it; empty when there is nothing in the way.
    static QStringList missingPrograms();

    /// What clients have: of the display the name that it will have.
    static QMap<QString, QString> variablesBefore();

    GnomeShell(const Options &options, const Place &place);

    /// DISPLAY and XAUTHORITY, where it has them; known only when it runs.
    const QMap<QString, QString> &variables() const { return variables_; }
    /// In pixels of windows.
    QSize screen() const { return screen_; }

    ChildProcess &process() { return *process_; }
    GnomeWindows &windows() { return windows_; }
    GnomeUser &user() { return *user_; }
    /// A null image when it cannot be had.
    QImage screenshot();

    void setOverview(bool isShown);
    bool isOverviewShown() const;

  private:
    QProcessEnvironment environment() const;
    void writeSettings(const Options &options) const;
    void writeMonitors(const Options &options) const;
    void waitUntilUp();

    Place place_;
    SessionBus systemBus_;
    QSize screen_;
    ShellEyes eyes_;
    GnomeWindows windows_;
    QMap<QString, QString> variables_;
    std::unique_ptr<ChildProcess> process_;
    std::unique_ptr<GnomeUser> user_;
};

} // namespace quillmender::harness
