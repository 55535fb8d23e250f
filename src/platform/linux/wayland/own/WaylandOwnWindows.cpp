#include "platform/linux/wayland/own/WaylandOwnWindows.h"

#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/own/ToolkitDisplay.h"
#include "platform/linux/wayland/own/WindowPanel.h"

#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace quillmender::wayland {

namespace {

// Only its name is asked for; what is said in it is the library's.
constexpr wl_interface layerShell{"zwlr_layer_shell_v1", 1, 0, nullptr, 0, nullptr};

QWindow &withoutParent(QWindow &window) {
    QWindow *root = &window;
    while (QWindow *parent = root->transientParent())
        root = parent;
    return *root;
}

} // namespace

/// The user may be typing into the document when a write-back has failed: the panel comes back with
/// its message, and leaves the keyboard where it is.
class WaylandOwnWindows::Aside : public SteppedAside {
  public:
    Aside(WaylandOwnWindows &windows, QWindow &window) : windows_(&windows), window_(&window) {
        window.hide();
    }
    ~Aside() override {
        if (!windows_ || !window_ || window_->isVisible())
            return;
        const QScopedValueRollback quiet(windows_->comesQuietly_, true);
        window_->show();
    }
    Q_DISABLE_COPY_MOVE(Aside)

    void stayAway() override { window_.clear(); }

  private:
    QPointer<WaylandOwnWindows> windows_;
    QPointer<QWindow> window_;
};

WaylandOwnWindows::WaylandOwnWindows(const WaylandConnection &connection, CompositorHelp help)
    : help_(std::move(help)),
      keyboard_(toolkitDisplay()) {
    if (connection.offeredVersion(layerShell) > 0)
        standing_ = makeLayerPanel(keyboard_);
    isLayer_ = standing_ != nullptr;
    if (!isLayer_)
        standing_ = std::make_unique<WindowPanel>(help_.swayCommand);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *focus) {
        hadKeyboard_ = hadKeyboard_ || (focus && focus == panel_);
        if (focus && focus == withheldFrom_)
            setWithheldFrom(nullptr);
    });
    connect(&arrival_, &KeyboardArrival::withheld, this, [this](QWindow *window) {
        if (!hasNoKeyboard())
            setWithheldFrom(window);
    });
}

WaylandOwnWindows::~WaylandOwnWindows() = default;

QString WaylandOwnWindows::panelBackend() const {
    return isLayer_ ? QStringLiteral("layer shell") : QStringLiteral("an ordinary window");
}

void WaylandOwnWindows::applyPanelAttributes(QWindow *window) {
    panel_ = window;
    window->installEventFilter(this);
    standing_->prepare(*window);
}

void WaylandOwnWindows::flush() {
    if (wl_display *const display = toolkitDisplay())
        wl_display_flush(display);
}

void WaylandOwnWindows::activate(QWindow *window) {
    if (window == panel_) {
        inFront_.clear();
        standing_->takeKeyboard();
    } else {
        giveWayTo(withoutParent(*window));
    }
    arrival_.await(*window, [this, window] { insistOn(*window); });
}

void WaylandOwnWindows::watchForKeyboard(std::function<void(QWindow *, bool)> tell) {
    tellOfKeyboard_ = std::move(tell);
}

// Nobody tells of a keyboard where the toolkit keeps its connection to itself.
bool WaylandOwnWindows::hasNoKeyboard() const {
    return keyboard_.display() && !keyboard_.isAny();
}

void WaylandOwnWindows::setWithheldFrom(QWindow *window) {
    const QPointer<QWindow> before = std::exchange(withheldFrom_, window);
    if (!tellOfKeyboard_ || before == window)
        return;
    if (before)
        tellOfKeyboard_(before, false);
    if (window)
        tellOfKeyboard_(window, true);
}

// A surface of the layer shell is above every window.
void WaylandOwnWindows::giveWayTo(QWindow &window) {
    if (!panel_ || !panel_->isVisible() || inFront_.contains(&window))
        return;
    window.installEventFilter(this);
    inFront_.append(&window);
    standing_->giveWay();
}

void WaylandOwnWindows::noteGone(QWindow *window) {
    if (inFront_.removeOne(window) && inFront_.isEmpty() && panel_ && panel_->isVisible()) {
        standing_->takeKeyboard();
        arrival_.await(*panel_, [this] { insistOn(*panel_); });
    }
}

void WaylandOwnWindows::insistOn(QWindow &window) {
    if (hasNoKeyboard())
        return;
    if (help_.activate) {
        help_.activate(window);
    } else if ((&window == panel_ && isLayer_) || window.transientParent()) {
        window.requestActivate();
    } else {
        // A window that is on the screen already may only be marked as one that wants something.
        const QScopedValueRollback again(comesAgain_, true);
        window.hide();
        window.show();
    }
}

QSet<quint32> WaylandOwnWindows::keysDownAtFocus(QWindow *window) {
    // The toolkit says later than the compositor which of its windows has the keyboard.
    const QWindow *const focus = QGuiApplication::focusWindow();
    return !focus || focus == window ? keyboard_.downAtEntry() : QSet<quint32>();
}

bool WaylandOwnWindows::isKeyDown(quint32 code) {
    return keyboard_.isDown(code);
}

QScreen *WaylandOwnWindows::screenInUse() {
    const auto active = help_.toplevels ? help_.toplevels->active() : std::nullopt;
    if (!active || active->output.isEmpty())
        return nullptr;
    const QList<QScreen *> screens = QGuiApplication::screens();
    const auto found = std::ranges::find(screens, active->output, &QScreen::name);
    return found == screens.end() ? nullptr : *found;
}

std::unique_ptr<SteppedAside> WaylandOwnWindows::stepAside(QWindow *window) {
    // Whoever has the keyboard got it with the panel on the screen, and so does the next one. A
    // panel that is still to get it would take it away in the middle of what is typed.
    if (hadKeyboard_ && QGuiApplication::focusWindow() != window)
        return nullptr;
    return std::make_unique<Aside>(*this, *window);
}

bool WaylandOwnWindows::eventFilter(QObject *watched, QEvent *event) {
    const bool isPanel = watched == panel_;
    if (event->type() == QEvent::Show && isPanel) {
        hadKeyboard_ = false;
        standing_->aboutToShow(!comesQuietly_);
    } else if (event->type() == QEvent::Hide && comesAgain_) {
        return false;
    } else if (event->type() == QEvent::Hide && isPanel) {
        hadKeyboard_ = false;
        inFront_.clear();
        arrival_.forget();
        if (withheldFrom_ == panel_)
            setWithheldFrom(nullptr);
    } else if (event->type() == QEvent::Hide) {
        watched->removeEventFilter(this);
        noteGone(static_cast<QWindow *>(watched));
    }
    return false;
}

} // namespace quillmender::wayland
