#pragma once

#include "platform/linux/wayland/Toplevels.h"
#include "platform/linux/wayland/sway/SwayIpc.h"

#include <QHash>
#include <QJsonObject>
#include <QPointer>

#include <functional>

namespace quillmender::sway {

/// The windows in the compositor's tree, which is read once, and again when windows have changed
/// their places in it.
class SwayToplevels : public wayland::Toplevels {
    Q_OBJECT

  public:
    /// Who says whether the keyboard is with the windows at all. A surface that covers them, as a
    /// panel or a launcher, takes it without a change in the tree.
    using KeyboardIsWithWindows = std::function<bool()>;

    /// The connection must outlive the object.
    explicit SwayToplevels(SwayIpc &ipc, KeyboardIsWithWindows withWindows = {});

    std::optional<wayland::Toplevel> active() const override;
    bool hasKeyboard(const QByteArray &id) const override;
    bool activate(const QByteArray &id) override;

    /// Whether the tree has come.
    bool isKnown() const { return isKnown_; }

  private:
    void askForTree();
    void adoptTree(const QJsonObject &root);
    void handleEvent(Event event, const QJsonObject &content);
    void handleWindow(const QString &change, const QJsonObject &container);
    void forgetAll();
    void setFocused(const QByteArray &id);
    bool isOwn(const QByteArray &id) const;

    SwayIpc &ipc_;
    KeyboardIsWithWindows withWindows_;
    QHash<QByteArray, wayland::Toplevel> windows_; ///< this program's own among them
    QByteArray focused_;                           ///< empty when no window has the focus
    QByteArray active_;                            ///< never one of this program's
    std::weak_ptr<IpcQuestion> tree_;              ///< under way
    bool isTreeStale_ = false; ///< it has been asked for before the latest change
    bool isKnown_ = false;
};

} // namespace quillmender::sway
