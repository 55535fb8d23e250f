#include "platform/linux/x11/SelectionConversion.h"

#include "platform/linux/x11/X11Connection.h"

#include <QTimer>

namespace quillmender {

using namespace std::chrono_literals;

SelectionConversion::SelectionConversion(X11Connection &connection, xcb_atom_t selection,
                                         xcb_atom_t target, xcb_timestamp_t time,
                                         const QList<quint32> &parameter)
    : connection_(connection),
      selection_(selection),
      target_(target),
      property_(connection.atom("_QUILLMENDER_DATA")),
      window_(xcb_generate_id(connection.xcb())) {
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.xcb(), 0, window_, connection_.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    if (!parameter.isEmpty())
        writeCardinals(connection_, window_, property_, XCB_ATOM_ATOM, parameter);
    connect(&connection_, &X11Connection::eventReceived, this, &SelectionConversion::handleEvent);
    xcb_convert_selection(connection_.xcb(), window_, selection_, target_, property_, time);
}

SelectionConversion::~SelectionConversion() {
    xcb_destroy_window(connection_.xcb(), window_);
}

void SelectionConversion::abandon(std::unique_ptr<SelectionConversion> conversion) {
    SelectionConversion *const left = conversion.release();
    left->setParent(&left->connection_);
    const auto removeWhenFinished = [left] {
        if (left->isFinished())
            left->deleteLater();
        else
            left->result_.value.clear();
    };
    connect(left, &SelectionConversion::advanced, left, removeWhenFinished);
    QTimer::singleShot(30s, left, &QObject::deleteLater);
    removeWhenFinished();
}

void SelectionConversion::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_SELECTION_NOTIFY && state_ == State::waiting) {
        const auto &answer = eventCast<xcb_selection_notify_event_t>(event);
        const bool isMine = answer.requestor == window_ && answer.selection == selection_ &&
                            answer.target == target_;
        if (isMine)
            receiveAnswer(answer.property);
    } else if (eventType(event) == XCB_PROPERTY_NOTIFY && state_ == State::incremental) {
        const auto &change = eventCast<xcb_property_notify_event_t>(event);
        const bool isMine = change.window == window_ && change.atom == property_ &&
                            change.state == XCB_PROPERTY_NEW_VALUE;
        if (isMine)
            receiveChunk();
    }
}

void SelectionConversion::receiveAnswer(xcb_atom_t property) {
    if (property != property_)
        return advance(State::refused);
    auto answer = readProperty(connection_, window_, property_, AfterReading::remove);
    if (!answer)
        return advance(State::refused);
    if (answer->type == connection_.atom("INCR"))
        return advance(State::incremental);
    result_ = std::move(*answer);
    advance(State::done);
}

void SelectionConversion::receiveChunk() {
    const auto chunk = readProperty(connection_, window_, property_, AfterReading::remove);
    if (!chunk)
        return;
    if (result_.type == XCB_ATOM_NONE) {
        result_.type = chunk->type;
        result_.format = chunk->format;
    }
    if (chunk->value.isEmpty())
        return advance(State::done);
    // Chunks of different sorts do not make one value.
    if (chunk->type != result_.type || chunk->format != result_.format)
        return advance(State::refused);
    result_.value += chunk->value;
    advance(State::incremental);
}

void SelectionConversion::advance(State state) {
    state_ = state;
    xcb_flush(connection_.xcb());
    Q_EMIT advanced();
}

} // namespace quillmender
