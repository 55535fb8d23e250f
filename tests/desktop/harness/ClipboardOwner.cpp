#include "desktop/harness/ClipboardOwner.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/XcbConnection.h"

#include <QBuffer>
#include <QImage>

#include <array>
#include <cstring>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace quillmender::harness {

ClipboardOwner::ClipboardOwner(const QString &display, QList<ClipboardRepresentation> offer,
                               QByteArray selection)
    : connection_(std::make_unique<XcbConnection>(display)),
      offer_(std::move(offer)),
      window_(connection_->createHiddenWindow()),
      largestProperty_(xcb_get_maximum_request_length(connection_->get()) * 4 / 2),
      stopEvent_(::eventfd(0, EFD_CLOEXEC)) {
    since_ = serverTime();
    const xcb_atom_t atom = connection_->atom(selection);
    xcb_set_selection_owner(connection_->get(), window_, atom, since_);
    const XcbPointer<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection_->get(), xcb_get_selection_owner(connection_->get(), atom), nullptr));
    if (!owner || owner->owner != window_)
        throw HarnessError(QStringLiteral("the selection could not be owned"));
    owns_ = true;
    thread_ = std::thread(&ClipboardOwner::run, this);
}

ClipboardOwner::~ClipboardOwner() {
    constexpr quint64 once = 1;
    [[maybe_unused]] const ssize_t written = ::write(stopEvent_, &once, sizeof(once));
    if (thread_.joinable())
        thread_.join();
    ::close(stopEvent_);
}

QList<ClipboardRepresentation> ClipboardOwner::textHtmlAndImage() {
    QImage image(64, 48, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x * 4, y * 5, (x * y) % 256, 255));
    }
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return plainText(QStringLiteral("What the user had copied \u2013 caf\u00e9\n")) +
           QList<ClipboardRepresentation>{
               {"text/html", "text/html", 8, "<p>What the user <b>had copied</b> \xe2\x80\x93</p>"},
               {"image/png", "image/png", 8, png}};
}

QList<ClipboardRepresentation> ClipboardOwner::plainText(const QString &text) {
    return {{"UTF8_STRING", "UTF8_STRING", 8, text.toUtf8()},
            {"text/plain;charset=utf-8", "text/plain;charset=utf-8", 8, text.toUtf8()},
            {"STRING", "STRING", 8, text.toLatin1()}};
}

QList<QByteArray> ClipboardOwner::requests() const {
    const std::scoped_lock lock(requestsMutex_);
    return requests_;
}

void ClipboardOwner::standStillAt(const QByteArray &target, std::chrono::milliseconds duration) {
    const std::scoped_lock lock(requestsMutex_);
    stalls_.insert(target, duration);
}

void ClipboardOwner::standStill(xcb_atom_t target) {
    std::chrono::milliseconds duration{0};
    {
        const std::scoped_lock lock(requestsMutex_);
        if (stalls_.isEmpty())
            return;
        duration = stalls_.take(connection_->atomName(target));
    }
    std::this_thread::sleep_for(duration);
}

void ClipboardOwner::run() {
    std::array<pollfd, 2> sources{
        {{xcb_get_file_descriptor(connection_->get()), POLLIN, 0}, {stopEvent_, POLLIN, 0}}};
    while (xcb_connection_has_error(connection_->get()) == 0) {
        bool isBusy = false;
        while (
            const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
            handle(*event);
            isBusy = true;
        }
        xcb_flush(connection_->get());
        // Writing much, xcb reads events meanwhile, which the socket then no longer announces.
        if (isBusy)
            continue;
        ::poll(sources.data(), sources.size(), -1);
        if (sources[1].revents != 0)
            return;
    }
}

void ClipboardOwner::handle(const xcb_generic_event_t &event) {
    switch (event.response_type & 0x7f) {
    case XCB_SELECTION_REQUEST:
        serve(reinterpret_cast<const xcb_selection_request_event_t &>(event));
        break;
    case XCB_SELECTION_CLEAR:
        owns_ = false;
        break;
    case XCB_PROPERTY_NOTIFY:
        continueIncrement(reinterpret_cast<const xcb_property_notify_event_t &>(event));
        break;
    default:
        break;
    }
}

void ClipboardOwner::serve(const xcb_selection_request_event_t &request) {
    // Obsolete clients name no property and mean the target's name.
    const xcb_atom_t property =
        request.property == XCB_ATOM_NONE ? request.target : request.property;
    const bool done = request.target == connection_->atom("MULTIPLE")
                          ? putMultiple(request.requestor, property)
                          : put(request.requestor, property, request.target);
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request.time;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    answer.property = done ? property : xcb_atom_t{XCB_ATOM_NONE};
    xcb_send_event(connection_->get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&answer));
}

bool ClipboardOwner::put(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target) {
    standStill(target);
    if (target == connection_->atom("TARGETS")) {
        putTargets(requestor, property);
        return true;
    }
    if (target == connection_->atom("TIMESTAMP")) {
        xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, requestor, property,
                            XCB_ATOM_INTEGER, 32, 1, &since_);
        return true;
    }
    const QByteArray name = connection_->atomName(target);
    {
        const std::scoped_lock lock(requestsMutex_);
        requests_.append(name);
    }
    for (const ClipboardRepresentation &representation : offer_) {
        if (representation.target != name)
            continue;
        const xcb_atom_t type = connection_->atom(representation.type);
        if (representation.bytes.size() > largestProperty_) {
            const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(connection_->get(), requestor, XCB_CW_EVENT_MASK, &events);
            const auto size = static_cast<uint32_t>(representation.bytes.size());
            increments_.append(
                {requestor, property, type, representation.format, representation.bytes});
            xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, requestor, property,
                                connection_->atom("INCR"), 32, 1, &size);
            return true;
        }
        const auto units = representation.bytes.size() / (representation.format / 8);
        xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, requestor, property, type,
                            static_cast<uint8_t>(representation.format),
                            static_cast<uint32_t>(units), representation.bytes.constData());
        return true;
    }
    return false;
}

void ClipboardOwner::putTargets(xcb_window_t requestor, xcb_atom_t property) {
    QList<xcb_atom_t> atoms{connection_->atom("TARGETS"), connection_->atom("TIMESTAMP"),
                            connection_->atom("MULTIPLE")};
    for (const ClipboardRepresentation &representation : offer_)
        atoms.append(connection_->atom(representation.target));
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, requestor, property,
                        XCB_ATOM_ATOM, 32, static_cast<uint32_t>(atoms.size()), atoms.constData());
}

bool ClipboardOwner::putMultiple(xcb_window_t requestor, xcb_atom_t property) {
    const auto pairs = connection_->property(requestor, connection_->atomName(property));
    if (!pairs)
        return false;
    QList<xcb_atom_t> atoms(pairs->size() / static_cast<qsizetype>(sizeof(xcb_atom_t)));
    std::memcpy(atoms.data(), pairs->constData(), atoms.size() * sizeof(xcb_atom_t));
    for (qsizetype index = 0; index + 1 < atoms.size(); index += 2) {
        if (!put(requestor, atoms[index + 1], atoms[index]))
            atoms[index + 1] = XCB_ATOM_NONE;
    }
    xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, requestor, property,
                        connection_->atom("ATOM_PAIR"), 32, static_cast<uint32_t>(atoms.size()),
                        atoms.constData());
    return true;
}

void ClipboardOwner::continueIncrement(const xcb_property_notify_event_t &event) {
    if (event.state != XCB_PROPERTY_DELETE)
        return;
    for (qsizetype index = 0; index < increments_.size(); ++index) {
        Increment &increment = increments_[index];
        if (increment.requestor != event.window || increment.property != event.atom)
            continue;
        const QByteArray chunk = increment.rest.left(largestProperty_ / 4 * 4);
        increment.rest.remove(0, chunk.size());
        xcb_change_property(
            connection_->get(), XCB_PROP_MODE_REPLACE, increment.requestor, increment.property,
            increment.type, static_cast<uint8_t>(increment.format),
            static_cast<uint32_t>(chunk.size() / (increment.format / 8)), chunk.constData());
        if (chunk.isEmpty())
            increments_.removeAt(index);
        return;
    }
}

xcb_timestamp_t ClipboardOwner::serverTime() {
    // Appending nothing changes nothing, but is announced with the time of the server.
    xcb_change_property(connection_->get(), XCB_PROP_MODE_APPEND, window_, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, 0, "");
    xcb_flush(connection_->get());
    while (const XcbPointer<xcb_generic_event_t> event{xcb_wait_for_event(connection_->get())}) {
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t &>(*event).time;
    }
    throw HarnessError(QStringLiteral("the X server does not tell its time"));
}

} // namespace quillmender::harness
