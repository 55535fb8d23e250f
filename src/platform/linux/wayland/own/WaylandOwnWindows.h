#pragma once

#include "platform/OwnWindows.h"
#include "platform/linux/Memory.h"
#include "platform/linux/wayland/own/KeyboardArrival.h"
#include "platform/linux/wayland/own/KeyboardWatch.h"
#include "platform/linux/wayland/own/PanelStanding.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

namespace quillmender::wayland {

class Toplevels;
class WaylandConnection;

/// What a compositor does for our windows beyond the protocols that the toolkit speaks. All of it
/// may be missing.
struct CompositorHelp {
    /// Tells on which output the user works; outlives the own windows.
    const Toplevels *toplevels = nullptr;

    /// Runs a command of a compositor that speaks sway's.
    std::function<void(const QString &command)> swayCommand{};

    /// Makes a window of this program, which is on the screen, the active one.
    std::function<void(const QWindow &window)> activate{};
};

/// Windows of the toolkit on a Wayland compositor. They cannot place themselves nor take the
/// keyboard: the panel is a surface of the layer shell where there is one, and everything else is
/// asked for. The keyboard goes back to the window that had it before when ours is hidden.
class WaylandOwnWindows : public QObject, public OwnWindows {
    Q_OBJECT

  public:
    /// The connection is asked for what the compositor offers, and not kept.
    WaylandOwnWindows(const WaylandConnection &connection, CompositorHelp help);
    ~WaylandOwnWindows() override;

    /// How the panel stands, in words for the log.
    QString panelBackend() const;

    /// What has no entry of a task bar here needs no policy for it.
    void setAccessoryPolicy() override {}
    void applyPanelAttributes(QWindow *window) override;
    /// The toolkit's flags and sizes say all of it.
    void applyWindowAttributes(QWindow *) override {}
    void provideMemory(void *begin, std::size_t bytes) override { populateMemory(begin, bytes); }
    void flush() override;
    void activate(QWindow *window) override;
    void watchForKeyboard(std::function<void(QWindow *, bool)> tell) override;
    QSet<quint32> keysDownAtFocus(QWindow *window) override;
    bool isKeyDown(quint32 code) override;
    bool framesPanel() override { return false; }
    QScreen *screenInUse() override;
    std::unique_ptr<SteppedAside> stepAside(QWindow *window) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    class Aside;

    void giveWayTo(QWindow &window);
    void noteGone(QWindow *window);
    void insistOn(QWindow &window);
    bool hasNoKeyboard() const;
    void setWithheldFrom(QWindow *window);

    CompositorHelp help_;
    KeyboardWatch keyboard_;
    bool isLayer_;
    std::unique_ptr<PanelStanding> standing_;
    KeyboardArrival arrival_;
    QPointer<QWindow> withheldFrom_; ///< the keyboard
    std::function<void(QWindow *, bool)> tellOfKeyboard_;
    QPointer<QWindow> panel_;
    QList<QWindow *> inFront_;  ///< of the panel, which gives way to them
    bool hadKeyboard_ = false;  ///< the panel, since it is on the screen
    bool comesQuietly_ = false; ///< the panel, when it is shown next
    bool comesAgain_ = false;   ///< what is hidden now is shown at once
};

} // namespace quillmender::wayland
