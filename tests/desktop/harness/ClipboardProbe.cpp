#include "desktop/harness/ClipboardProbe.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/XcbConnection.h"

#include <cstring>

namespace quillmender::harness {

namespace {

constexpr auto propertyName = "QUILLMENDER_PROBE";

bool carriesData(const QByteArray &target) {
    static const QList<QByteArray> protocol{"TARGETS",        "TIMESTAMP", "MULTIPLE",
                                            "SAVE_TARGETS",   "DELETE",    "INSERT_SELECTION",
                                            "INSERT_PROPERTY"};
    return !protocol.contains(target);
}

} // namespace

ClipboardProbe::ClipboardProbe(const QString &display, QByteArray selection)
    : connection_(std::make_unique<XcbConnection>(display)),
      selection_(connection_->atom(selection)),
      window_(connection_->createHiddenWindow()) {}

ClipboardProbe::~ClipboardProbe() = default;

xcb_window_t ClipboardProbe::owner() {
    const XcbPointer<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_->get(), xcb_get_selection_owner(connection_->get(), selection_), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

ClipboardContents ClipboardProbe::read(std::chrono::milliseconds deadline) {
    ClipboardContents contents;
    contents.owner = owner();
    if (contents.owner == XCB_WINDOW_NONE)
        return contents;
    const auto list = readTarget("TARGETS", deadline);
    if (!list)
        throw HarnessError(QStringLiteral("the clipboard's owner lists no targets"));
    QList<xcb_atom_t> atoms(list->bytes.size() / static_cast<qsizetype>(sizeof(xcb_atom_t)));
    std::memcpy(atoms.data(), list->bytes.constData(), atoms.size() * sizeof(xcb_atom_t));
    for (const xcb_atom_t atom : atoms) {
        const QByteArray target = connection_->atomName(atom);
        contents.targets.append(target);
        if (!carriesData(target))
            continue;
        if (const auto representation = readTarget(target, deadline))
            contents.representations.append(*representation);
    }
    return contents;
}

std::optional<ClipboardRepresentation>
ClipboardProbe::readTarget(const QByteArray &target, std::chrono::milliseconds deadline) {
    request(connection_->atom(target));
    if (waitForAnswer(deadline) == XCB_ATOM_NONE)
        return std::nullopt;
    Property property = takeProperty();
    if (property.type == connection_->atom("INCR")) {
        Property whole;
        do {
            waitForNewValue(deadline);
            property = takeProperty();
            whole.bytes += property.bytes;
        } while (!property.bytes.isEmpty());
        whole.type = property.type;
        whole.format = property.format;
        property = whole;
    }
    return ClipboardRepresentation{target, connection_->atomName(property.type), property.format,
                                   property.bytes};
}

QString ClipboardProbe::text() {
    const auto representation = readTarget("UTF8_STRING");
    return representation ? QString::fromUtf8(representation->bytes) : QString();
}

ClipboardProbe::Property ClipboardProbe::takeProperty() {
    // Reading with deletion is what asks for the next increment.
    const auto cookie =
        xcb_get_property(connection_->get(), 1, window_, connection_->atom(propertyName),
                         XCB_ATOM_ANY, 0, UINT32_MAX / 4);
    const XcbPointer<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_->get(), cookie, nullptr));
    if (!reply)
        return {};
    const QByteArray bytes(static_cast<const char *>(xcb_get_property_value(reply.get())),
                           xcb_get_property_value_length(reply.get()));
    return {reply->type, reply->format, bytes};
}

void ClipboardProbe::request(xcb_atom_t target) {
    const xcb_atom_t property = connection_->atom(propertyName);
    xcb_delete_property(connection_->get(), window_, property);
    connection_->roundTrip();
    while (const XcbPointer<xcb_generic_event_t> stale{xcb_poll_for_event(connection_->get())}) {
    }
    xcb_convert_selection(connection_->get(), window_, selection_, target, property,
                          XCB_CURRENT_TIME);
    xcb_flush(connection_->get());
}

xcb_atom_t ClipboardProbe::waitForAnswer(std::chrono::milliseconds deadline) {
    xcb_atom_t property = XCB_ATOM_NONE;
    const auto answered = [&] {
        while (
            const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
            if ((event->response_type & 0x7f) != XCB_SELECTION_NOTIFY)
                continue;
            property = reinterpret_cast<const xcb_selection_notify_event_t &>(*event).property;
            return true;
        }
        return false;
    };
    waitUntil(answered, QStringLiteral("the clipboard's owner answers"), deadline);
    return property;
}

void ClipboardProbe::waitForNewValue(std::chrono::milliseconds deadline) {
    const auto arrived = [&] {
        while (
            const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
            if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY &&
                reinterpret_cast<const xcb_property_notify_event_t &>(*event).state ==
                    XCB_PROPERTY_NEW_VALUE)
                return true;
        }
        return false;
    };
    waitUntil(arrived, QStringLiteral("the next increment of the clipboard"), deadline);
}

} // namespace quillmender::harness
