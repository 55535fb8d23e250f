#include "platform/linux/x11/X11Connection.h"

#include "platform/linux/x11/Xcb.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QThread>
#include <xcb/res.h>
#include <xcb/xfixes.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <future>
#include <thread>

namespace quillmender::x11 {

Q_LOGGING_CATEGORY(x11Log, "quillmender.x11", QtWarningMsg)

namespace {

xcb_screen_t *screenOfIndex(xcb_connection_t *xcb, int index) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(xcb));
    for (; screens.rem > 0 && index > 0; --index)
        xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

bool isPresent(xcb_connection_t *xcb, xcb_extension_t *extension) {
    const xcb_query_extension_reply_t *data = xcb_get_extension_data(xcb, extension);
    return data != nullptr && data->present != 0;
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::open(const QByteArray &displayName) {
    int screenIndex = 0;
    xcb_connection_t *const xcb =
        xcb_connect(displayName.isEmpty() ? nullptr : displayName.constData(), &screenIndex);
    return make(xcb, screenIndex);
}

// It is xcb that waits without a limit, until a server that accepts has something to say.
std::unique_ptr<X11Connection> X11Connection::openWithin(std::chrono::milliseconds limit) {
    struct Opened {
        std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> xcb;
        int screenIndex;
    };
    std::promise<Opened> promise;
    std::future<Opened> opening = promise.get_future();
    std::thread([promise = std::move(promise)]() mutable {
        int screenIndex = 0;
        xcb_connection_t *const xcb = xcb_connect(nullptr, &screenIndex);
        promise.set_value({{xcb, &xcb_disconnect}, screenIndex});
    }).detach();
    if (opening.wait_for(limit) != std::future_status::ready) {
        qCWarning(x11Log, "the X server does not answer");
        return nullptr;
    }
    Opened opened = opening.get();
    return make(opened.xcb.release(), opened.screenIndex);
}

std::unique_ptr<X11Connection> X11Connection::make(xcb_connection_t *xcb, int screenIndex) {
    xcb_screen_t *const screen =
        xcb_connection_has_error(xcb) == 0 ? screenOfIndex(xcb, screenIndex) : nullptr;
    if (screen == nullptr) {
        xcb_disconnect(xcb);
        return nullptr;
    }
    std::unique_ptr<X11Connection> connection(new X11Connection(xcb, screen));
    if (!connection->initialize())
        return nullptr;
    return connection;
}

X11Connection::X11Connection(xcb_connection_t *xcb, xcb_screen_t *screen)
    : xcb_(xcb),
      screen_(screen) {}

X11Connection::~X11Connection() {
    notifier_.reset();
    // Transfers under way still speak to the server when they end.
    while (!children().isEmpty())
        delete children().constFirst();
    xcb_disconnect(xcb_);
}

bool X11Connection::initialize() {
    for (xcb_extension_t *extension : {&xcb_xfixes_id, &xcb_test_id, &xcb_res_id})
        xcb_prefetch_extension_data(xcb_, extension);
    xcb_prefetch_maximum_request_length(xcb_);
    if (!isPresent(xcb_, &xcb_xfixes_id))
        return false;
    const auto version =
        replyTo(xcb_, xcb_xfixes_query_version_reply,
                xcb_xfixes_query_version(xcb_, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION));
    if (!version)
        return false;
    fixesFirstEvent_ = xcb_get_extension_data(xcb_, &xcb_xfixes_id)->first_event;
    hasTest_ = isPresent(xcb_, &xcb_test_id);
    hasResource_ = isPresent(xcb_, &xcb_res_id);

    window_ = xcb_generate_id(xcb_);
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb_, 0, window_, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    timestampAtom_ = atom("_QUILLMENDER_TIMESTAMP");
    continuation_.setSingleShot(true);
    connect(&continuation_, &QTimer::timeout, this, &X11Connection::dispatchPending);

    notifier_ =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(xcb_), QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &X11Connection::dispatchPending);
    // While xcb waits for a reply it takes events off the socket, which then no longer announces
    // them; and what was written last in a turn must leave before the loop sleeps.
    connect(QAbstractEventDispatcher::instance(thread()), &QAbstractEventDispatcher::aboutToBlock,
            this, &X11Connection::prepareToSleep);
    return true;
}

xcb_atom_t X11Connection::atom(const QByteArray &name) {
    const auto known = atoms_.constFind(name);
    if (known != atoms_.constEnd())
        return *known;
    const auto reply =
        replyTo(xcb_, xcb_intern_atom_reply,
                xcb_intern_atom(xcb_, 0, static_cast<quint16>(name.size()), name.constData()));
    const xcb_atom_t found = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    if (reply) {
        atoms_.insert(name, found);
        atomNames_.insert(found, name);
    }
    return found;
}

QList<QByteArray> X11Connection::atomNames(const QList<xcb_atom_t> &atoms) {
    QHash<xcb_atom_t, xcb_get_atom_name_cookie_t> asked;
    for (const xcb_atom_t atom : atoms) {
        if (atom != XCB_ATOM_NONE && !atomNames_.contains(atom) && !asked.contains(atom))
            asked.insert(atom, xcb_get_atom_name(xcb_, atom));
    }
    for (auto each = asked.cbegin(); each != asked.cend(); ++each) {
        xcb_generic_error_t *error = nullptr;
        const auto reply = replyTo(xcb_, xcb_get_atom_name_reply, each.value());
        std::free(error);
        if (!reply)
            continue;
        const QByteArray name(xcb_get_atom_name_name(reply.get()),
                              xcb_get_atom_name_name_length(reply.get()));
        atomNames_.insert(each.key(), name);
        atoms_.insert(name, each.key());
    }
    QList<QByteArray> names;
    names.reserve(atoms.size());
    for (const xcb_atom_t atom : atoms)
        names.append(atomNames_.value(atom));
    return names;
}

xcb_timestamp_t X11Connection::serverTime() {
    xcb_change_property(xcb_, XCB_PROP_MODE_APPEND, window_, timestampAtom_, XCB_ATOM_INTEGER, 32,
                        0, nullptr);
    // The reply comes after the event, which is then at hand.
    replyTo(xcb_, xcb_get_input_focus_reply, xcb_get_input_focus(xcb_));
    readEvents();
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    std::erase_if(pending_, [&](const auto &event) {
        if (eventType(event.get()) != XCB_PROPERTY_NOTIFY)
            return false;
        const auto &change = eventCast<xcb_property_notify_event_t>(event.get());
        if (change.window != window_ || change.atom != timestampAtom_)
            return false;
        time = change.time;
        return true;
    });
    return time;
}

bool X11Connection::isPending(const std::function<bool(const xcb_generic_event_t *)> &isMeant) {
    readEvents();
    return std::ranges::any_of(pending_, [&](const auto &event) { return isMeant(event.get()); });
}

qsizetype X11Connection::maximumDataBytes() const {
    constexpr qsizetype requestHeader = 64;
    return qsizetype{xcb_get_maximum_request_length(xcb_)} * 4 - requestHeader;
}

void X11Connection::readEvents() {
    // One look at the socket: others may send faster than it is emptied.
    if (xcb_generic_event_t *event = xcb_poll_for_event(xcb_))
        pending_.emplace_back(event);
    while (xcb_generic_event_t *event = xcb_poll_for_queued_event(xcb_))
        pending_.emplace_back(event);
}

void X11Connection::prepareToSleep() {
    if (isLost())
        return;
    xcb_flush(xcb_);
    readEvents();
    // Handlers run from an event of their own: outside one, nothing that they leave to be deleted
    // later would be, as long as the program lives.
    if (!pending_.empty() && !continuation_.isActive())
        QMetaObject::invokeMethod(this, &X11Connection::dispatchPending, Qt::QueuedConnection);
}

void X11Connection::dispatchPending() {
    if (isLost())
        return;
    constexpr qint64 longestMs = 10;
    QElapsedTimer time;
    time.start();
    readEvents();
    while (!pending_.empty()) {
        if (time.hasExpired(longestMs)) {
            continuation_.start(0);
            break;
        }
        const auto event = std::move(pending_.front());
        pending_.pop_front();
        if (event->response_type == 0) {
            const auto &error = eventCast<xcb_generic_error_t>(event.get());
            qCDebug(x11Log, "error %d of request %d.%d, resource 0x%x", error.error_code,
                    error.major_code, error.minor_code, error.resource_id);
        } else {
            Q_EMIT eventReceived(event.get());
        }
        if (pending_.empty())
            readEvents();
    }
    xcb_flush(xcb_);
    if (xcb_connection_has_error(xcb_) != 0)
        closeDown();
}

void X11Connection::closeDown() {
    qCWarning(x11Log, "the X server is gone");
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
    Q_EMIT lost();
}

} // namespace quillmender::x11
