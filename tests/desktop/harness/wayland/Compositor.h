#pragma once

#include "desktop/harness/ChildProcess.h"
#include "desktop/harness/DesktopFolders.h"
#include "desktop/harness/WindowList.h"
#include "desktop/harness/wayland/WaylandUser.h"

#include <QImage>

#include <memory>

namespace quillmender::harness {

class SessionBus;

enum class CompositorKind { sway, labwc, kwin };

/// "sway", "labwc", "kwin".
const char *nameOf(CompositorKind kind);

/// A Wayland compositor that draws into memory, with a user at its keyboard and mouse. Constructed
/// means that it takes clients and has started X for older ones where it was asked to.
class Compositor {
  public:
    struct Options {
        /// labwc has the size that wlroots gives a screen, whatever is asked for: 1280 x 720.
        QSize screen{1280, 800};
        /// Not for labwc, which has no setting for it.
        double scale = 1;
        /// The layouts of the user's keyboard.
        QString layouts = QStringLiteral("us");
        bool xwayland = false;
        /// More of its configuration: lines of sway's, keybind elements of labwc's, groups of
        /// kwinrc.
        // NOLINTNEXTLINE(readability-redundant-member-init): g++ warns where it is left out
        QString configuration = {};
    };

    /// Where it runs: the folders are those of its desktop, the bus its session's.
    struct Place {
        const DesktopFolders &folders;
        const QProcessEnvironment &environment;
        const SessionBus &sessionBus;
    };

    static std::unique_ptr<Compositor> start(CompositorKind kind, const Options &options,
                                             const Place &place);

    /// The programs that this machine lacks for it; empty when there is nothing in the way.
    static QStringList missingPrograms(CompositorKind kind);

    virtual ~Compositor();
    Compositor(const Compositor &) = delete;
    Compositor &operator=(const Compositor &) = delete;

    /// What clients are started with: WAYLAND_DISPLAY, DISPLAY and what else a session of it has.
    const QMap<QString, QString> &variables() const { return variables_; }
    QString socketPath() const;
    /// Of the compositor that has the screen's picture, which is another one where it is nested.
    virtual QString screenSocketPath() const { return socketPath(); }
    /// In pixels of windows.
    QSize screen() const { return screen_; }

    virtual ChildProcess &process() = 0;
    virtual WindowList &windows() = 0;
    virtual WaylandUser &user() = 0;
    virtual QImage screenshot();

    /// The keyboard goes over to another one of its layouts, counted from 0.
    virtual void useLayout(quint32 layout) { user().useLayout(layout); }

    /// Reads its configuration again, as its user can ask it to.
    virtual void reload() = 0;

    /// Lets a program use what the compositor gives to none but those whose .desktop file says so.
    virtual void trust(const QString & /*program*/, const QString & /*desktopFile*/) {}

  protected:
    Compositor(const Place &place, QSize screen, const QString &name);

    const Place &place() const { return place_; }
    QProcessEnvironment environmentWith(const QMap<QString, QString> &more) const;
    /// A command line that the compositor runs when it is up; it tells of its displays.
    const QString &announcement() const { return announcement_; }
    void waitForAnnouncement(ChildProcess &process);
    void setVariable(const char *name, const QString &value) {
        variables_.insert(QString::fromLatin1(name), value);
    }

    void hideVariable(const char *name) { variables_.remove(QString::fromLatin1(name)); }

  private:
    Place place_;
    QSize screen_;
    QString announced_; ///< the file that the announcement writes
    QString announcement_;
    QMap<QString, QString> variables_;
};

} // namespace quillmender::harness
