#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QScreen>
#include <QWidget>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace {

constexpr QSize windowSize(620, 620);

xcb_keycode_t keyCode(xcb_connection_t *connection, xcb_keysym_t wanted) {
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const auto count = static_cast<quint8>(setup->max_keycode - setup->min_keycode + 1);
    xcb_get_keyboard_mapping_reply_t *mapping = xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, count), nullptr);
    xcb_keycode_t code = 0;
    const xcb_keysym_t *keysyms = xcb_get_keyboard_mapping_keysyms(mapping);
    for (int i = 0; i < count && code == 0; ++i) {
        if (keysyms[std::size_t(i) * mapping->keysyms_per_keycode] == wanted)
            code = static_cast<xcb_keycode_t>(setup->min_keycode + i);
    }
    std::free(mapping);
    return code;
}

class ShowOnKey : public QAbstractNativeEventFilter {
  public:
    ShowOnKey() {
        auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        xcb_connection_t *connection = x11->connection();
        constexpr xcb_keysym_t returnKey = 0xff0d;
        xcb_grab_key(connection, 1, xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root,
                     XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, keyCode(connection, returnKey),
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_flush(connection);
    }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override {
        const auto *event = static_cast<xcb_generic_event_t *>(message);
        // The toolkit hears its own keys through another extension: this one was grabbed.
        if ((event->response_type & 0x7f) == XCB_KEY_PRESS)
            show();
        return false;
    }

  private:
    void show() {
        if (!window_) {
            window_ = std::make_unique<QWidget>();
            window_->setWindowTitle(QStringLiteral("Floor"));
            window_->setFixedSize(windowSize);
            const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
            window_->move(screen.center() - QRect(QPoint(), windowSize).center());
        }
        window_->show();
        window_->raise();
        window_->activateWindow();
    }

    std::unique_ptr<QWidget> window_;
};

} // namespace

// The least that answers a hot key with a window: grabs Control + Alt + Return, shows an empty
// window of the panel's size, and keeps it for the next time.
int main(int argc, char *argv[]) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    ShowOnKey filter;
    application.installNativeEventFilter(&filter);
    return QApplication::exec();
}
