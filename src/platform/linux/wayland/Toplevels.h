#pragma once

#include "platform/Workspace.h"

#include <QObject>
#include <QString>

#include <optional>

namespace quillmender::wayland {

/// One application window as a compositor tells of it. What it does not tell is empty.
struct Toplevel {
    QByteArray id; ///< the compositor's own, never used again for another window while we run
    qint64 processId = 0;
    QString appId; ///< the name of its .desktop file, or the class of an X11 window
    QString title;
    QString output; ///< the name of the output that it is on
    std::optional<DesktopRect> frame;
    bool isOfXServer = false; ///< known to be a window of the X server beside the compositor

    friend bool operator==(const Toplevel &first, const Toplevel &second) {
        return first.id == second.id;
    }
};

/// The windows of other applications, kept current by the compositor's events, so that asking costs
/// nothing. This program's own windows are not among them: while one of them is active, the last
/// other window that was stays the active one, for as long as it is there.
class Toplevels : public QObject {
    Q_OBJECT

  public:
    /// The active window; absent when there is none.
    virtual std::optional<Toplevel> active() const = 0;

    /// Whether the window with that id has the keyboard now, and not one of this program.
    virtual bool hasKeyboard(const QByteArray &id) const = 0;

    /// Asks the compositor to make it the active one. True when the request was sent, which does
    /// not mean that it was granted.
    virtual bool activate(const QByteArray &id) = 0;

  Q_SIGNALS:
    /// `active()` or `hasKeyboard()` answers something else now.
    void changed();
};

} // namespace quillmender::wayland
