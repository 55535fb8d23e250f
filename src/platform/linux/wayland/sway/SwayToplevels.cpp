#include "platform/linux/wayland/sway/SwayToplevels.h"

#include "platform/linux/wayland/sway/SwayTree.h"

#include <QGuiApplication>
#include <QWindow>

namespace quillmender::sway {

using wayland::Toplevel;

SwayToplevels::SwayToplevels(SwayIpc &ipc, KeyboardIsWithWindows withWindows)
    : ipc_(ipc),
      withWindows_(std::move(withWindows)) {
    connect(&ipc_, &SwayIpc::eventReceived, this, &SwayToplevels::handleEvent);
    connect(&ipc_, &SwayIpc::connected, this, &SwayToplevels::askForTree);
    connect(&ipc_, &SwayIpc::lost, this, &SwayToplevels::forgetAll);
    if (auto *const toolkit = qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        connect(toolkit, &QGuiApplication::focusWindowChanged, this, &Toplevels::changed);
    ipc_.subscribe({QStringLiteral("window"), QStringLiteral("workspace")});
    askForTree();
}

std::optional<Toplevel> SwayToplevels::active() const {
    const auto found = windows_.constFind(active_);
    return found == windows_.cend() ? std::nullopt : std::optional(*found);
}

bool SwayToplevels::hasKeyboard(const QByteArray &id) const {
    const bool isOurs = QGuiApplication::focusWindow() != nullptr;
    return !id.isEmpty() && focused_ == id && active_ == id && !isOurs &&
           (!withWindows_ || withWindows_());
}

bool SwayToplevels::activate(const QByteArray &id) {
    if (!windows_.contains(id) || isOwn(id) || !ipc_.isConnected())
        return false;
    ipc_.post(Request::runCommand, "[con_id=" + id + "] focus");
    return true;
}

void SwayToplevels::askForTree() {
    isTreeStale_ = !tree_.expired();
    if (isTreeStale_)
        return;
    const auto question = ipc_.start(Request::getTree, {});
    if (!question)
        return;
    tree_ = question;
    connect(question.get(), &IpcQuestion::over, this, [this, asked = question.get()] {
        tree_.reset();
        if (asked->answer())
            adoptTree(asked->answer()->object());
        if (isTreeStale_)
            askForTree();
    });
}

void SwayToplevels::adoptTree(const QJsonObject &root) {
    windows_.clear();
    QByteArray focused;
    const QList<SwayWindow> windows = windowsOf(root);
    for (const SwayWindow &window : windows) {
        windows_.insert(window.toplevel.id, window.toplevel);
        if (window.isFocused)
            focused = window.toplevel.id;
    }
    isKnown_ = true;
    setFocused(focused);
    Q_EMIT changed();
}

void SwayToplevels::handleEvent(Event event, const QJsonObject &content) {
    const QString change = content[u"change"].toString();
    if (event == Event::window)
        handleWindow(change, content[u"container"].toObject());
    else if (event == Event::workspace)
        askForTree();
}

void SwayToplevels::handleWindow(const QString &change, const QJsonObject &container) {
    const std::optional<SwayWindow> window = windowOf(container);
    if (!window) {
        // A container of several windows can have the focus; its windows have not.
        askForTree();
        return;
    }
    const QByteArray id = window->toplevel.id;
    if (change == QStringLiteral("close")) {
        windows_.remove(id);
        if (focused_ == id)
            setFocused({});
        Q_EMIT changed();
        return;
    }
    Toplevel &known = windows_[id];
    const QString output = known.output;
    known = window->toplevel;
    known.output = output;
    if (change == QStringLiteral("focus"))
        setFocused(id);
    const bool isElsewhere = output.isEmpty() || (change != QStringLiteral("focus") &&
                                                  change != QStringLiteral("title"));
    if (isElsewhere)
        askForTree();
    Q_EMIT changed();
}

void SwayToplevels::forgetAll() {
    windows_.clear();
    isKnown_ = false;
    setFocused({});
    Q_EMIT changed();
}

void SwayToplevels::setFocused(const QByteArray &id) {
    focused_ = id;
    if (!isOwn(id))
        active_ = id;
}

bool SwayToplevels::isOwn(const QByteArray &id) const {
    const auto found = windows_.constFind(id);
    return found != windows_.cend() && found->processId == QCoreApplication::applicationPid();
}

} // namespace quillmender::sway
