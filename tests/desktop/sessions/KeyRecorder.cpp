#include "desktop/sessions/KeyRecorder.h"

#include "desktop/harness/Waiter.h"

#include <X11/keysym.h>
#include <unistd.h>

namespace quillmender {

using harness::XcbPointer;

namespace {

bool isModifier(xcb_keysym_t key) {
    return key >= XK_Shift_L && key <= XK_Hyper_R;
}

} // namespace

KeyRecorder::KeyRecorder(harness::Desktop &desktop)
    : connection_(desktop.display()),
      window_(xcb_generate_id(connection_.get())) {
    const quint32 events = XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), 40, 40,
                      320, 200, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
    const QByteArray title = "Key recorder";
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, static_cast<quint32>(title.size()), title.constData());
    const auto process = static_cast<quint32>(::getpid());
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_,
                        connection_.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &process);
    xcb_map_window(connection_.get(), window_);
    connection_.roundTrip();
    harness::waitUntil([&] { return desktop.windows().active() == window_; },
                       QStringLiteral("the key recorder is active"));
}

KeyRecorder::~KeyRecorder() {
    xcb_destroy_window(connection_.get(), window_);
}

QStringList KeyRecorder::presses() {
    connection_.roundTrip();
    while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if ((event->response_type & 0x7f) != XCB_KEY_PRESS)
            continue;
        const QString press = describe(reinterpret_cast<const xcb_key_press_event_t &>(*event));
        if (!press.isEmpty())
            presses_.append(press);
    }
    return presses_;
}

QString KeyRecorder::describe(const xcb_key_press_event_t &press) {
    const auto cookie = xcb_get_keyboard_mapping(connection_.get(), press.detail, 1);
    const XcbPointer<xcb_get_keyboard_mapping_reply_t> mapping(
        xcb_get_keyboard_mapping_reply(connection_.get(), cookie, nullptr));
    const xcb_keysym_t key = *xcb_get_keyboard_mapping_keysyms(mapping.get());
    if (isModifier(key))
        return {};
    QString name;
    if ((press.state & XCB_MOD_MASK_CONTROL) != 0)
        name += QStringLiteral("Control+");
    if ((press.state & XCB_MOD_MASK_1) != 0)
        name += QStringLiteral("Alt+");
    if ((press.state & XCB_MOD_MASK_SHIFT) != 0)
        name += QStringLiteral("Shift+");
    const bool isLatin1 = key > XK_space && key <= XK_ydiaeresis;
    return name + (isLatin1 ? QString(QChar(static_cast<char16_t>(key)))
                            : QStringLiteral("0x%1").arg(key, 0, 16));
}

} // namespace quillmender
