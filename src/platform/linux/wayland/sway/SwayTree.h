#pragma once

#include "platform/linux/wayland/Toplevels.h"

#include <QJsonObject>
#include <QList>

namespace quillmender::sway {

/// A window as the compositor describes it.
struct SwayWindow {
    wayland::Toplevel toplevel;
    bool isFocused = false;
};

/// The window of a container, whose output it does not say; absent when it is none.
std::optional<SwayWindow> windowOf(const QJsonObject &container);

/// All windows of the tree.
QList<SwayWindow> windowsOf(const QJsonObject &root);

} // namespace quillmender::sway
