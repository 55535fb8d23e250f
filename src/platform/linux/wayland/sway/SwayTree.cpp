#include "platform/linux/wayland/sway/SwayTree.h"

#include <QJsonArray>

namespace quillmender::sway {

namespace {

qint64 integer(const QJsonValue &value) {
    return value.toInteger();
}

std::optional<DesktopRect> rectangle(const QJsonObject &place) {
    const DesktopRect frame{place[u"x"].toInt(), place[u"y"].toInt(), place[u"width"].toInt(),
                            place[u"height"].toInt()};
    if (frame.width <= 0 || frame.height <= 0)
        return std::nullopt;
    return frame;
}

void collect(const QJsonObject &node, QString output, QList<SwayWindow> &windows) {
    if (node[u"type"].toString() == QStringLiteral("output"))
        output = node[u"name"].toString();
    if (std::optional<SwayWindow> window = windowOf(node)) {
        window->toplevel.output = output;
        windows.append(*std::move(window));
        return;
    }
    for (const auto *kind : {u"nodes", u"floating_nodes"}) {
        const QJsonArray children = node[QStringView(kind)].toArray();
        for (const QJsonValue &child : children)
            collect(child.toObject(), output, windows);
    }
}

} // namespace

std::optional<SwayWindow> windowOf(const QJsonObject &container) {
    // Only windows belong to a process.
    const qint64 id = integer(container[u"id"]);
    if (id <= 0 || !container.contains(u"pid"))
        return std::nullopt;
    SwayWindow window;
    window.toplevel.id = QByteArray::number(id);
    window.toplevel.processId = integer(container[u"pid"]);
    window.toplevel.appId = container[u"app_id"].toString();
    if (window.toplevel.appId.isEmpty())
        window.toplevel.appId = container[u"window_properties"].toObject()[u"class"].toString();
    window.toplevel.title = container[u"name"].toString();
    window.toplevel.frame = rectangle(container[u"rect"].toObject());
    window.toplevel.isOfXServer = container[u"shell"].toString() == QStringLiteral("xwayland");
    window.isFocused = container[u"focused"].toBool();
    return window;
}

QList<SwayWindow> windowsOf(const QJsonObject &root) {
    QList<SwayWindow> windows;
    collect(root, {}, windows);
    return windows;
}

} // namespace quillmender::sway
