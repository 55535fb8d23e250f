#include "desktop/presence/PresenceFixture.h"

namespace quillmender {

using harness::waitUntil;

namespace {

constexpr int lineHeight = 20;
constexpr QRgb badgeColor = 0xff4a5bd4;

} // namespace

harness::ProductProcess &
PresenceFixture::startProgram(const harness::ProductProcess::Setup &setup) {
    program_.reset();
    program_.emplace(desktop(), setup);
    program_->waitUntilReady();
    return *program_;
}

void PresenceFixture::waitUntilProgramHasEnded() {
    waitUntil([this] { return !program_->process().isRunning(); },
              QStringLiteral("the program has ended"));
}

int PresenceFixture::run(const QString &name, const QStringList &arguments) {
    const harness::ChildProcess process(desktop().command(name, arguments));
    waitUntil([&] { return !process.isRunning(); }, name + QStringLiteral(" has ended"));
    return process.exitCode().value_or(-1);
}

xcb_window_t PresenceFixture::waitForWindow(const QString &title) {
    xcb_window_t window = XCB_WINDOW_NONE;
    waitUntil(
        [&] {
            window = desktop().windows().titled(title);
            return window != XCB_WINDOW_NONE && desktop().windows().active() == window;
        },
        title + QStringLiteral(" is shown and active"));
    return window;
}

void PresenceFixture::closeWindow(const QString &title) {
    desktop().windows().close(desktop().windows().titled(title));
    waitUntil([&] { return desktop().windows().titled(title) == XCB_WINDOW_NONE; },
              title + QStringLiteral(" is closed"));
}

bool PresenceFixture::isMenu(xcb_window_t window) {
    xcb_connection_t *connection = desktop().connection().get();
    const harness::XcbPointer<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, window),
                                        nullptr));
    // Nobody else puts up windows past the window manager; a tool tip is one line.
    return attributes && attributes->override_redirect &&
           attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
           desktop().windows().geometry(window).height() > 3 * lineHeight;
}

std::optional<QRect> PresenceFixture::menu() {
    const harness::XcbConnection &connection = desktop().connection();
    const harness::XcbPointer<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        connection.get(), xcb_query_tree(connection.get(), connection.root()), nullptr));
    const xcb_window_t *windows = xcb_query_tree_children(tree.get());
    for (int at = 0; at < xcb_query_tree_children_length(tree.get()); ++at) {
        if (isMenu(windows[at]))
            return desktop().windows().geometry(windows[at]);
    }
    return std::nullopt;
}

QRect PresenceFixture::waitForMenu() {
    waitUntil([this] { return menu().has_value(); }, QStringLiteral("a menu is open"));
    return *menu();
}

std::optional<QRect> PresenceFixture::icon() {
    const QImage screen = desktop().screenshot();
    QRect found;
    for (int y = 0; y < screen.height(); ++y)
        for (int x = 0; x < screen.width(); ++x)
            if ((screen.pixel(x, y) | 0xff000000) == badgeColor)
                found |= QRect(x, y, 1, 1);
    if (found.isNull())
        return std::nullopt;
    return found;
}

QPoint PresenceFixture::waitForIcon() {
    waitUntil([this] { return icon().has_value(); }, QStringLiteral("the icon is seen"));
    return icon()->center();
}

void PresenceFixture::TearDown() {
    DesktopTest::TearDown();
    program_.reset();
}

} // namespace quillmender
