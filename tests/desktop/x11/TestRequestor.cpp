#include "desktop/x11/TestRequestor.h"

#include "desktop/x11/WaitFor.h"

namespace quillmender::x11 {

std::optional<X11Property> takeProperty(const X11Connection &connection, xcb_window_t window,
                                        xcb_atom_t property) {
    constexpr qsizetype most = qsizetype{256} * 1024 * 1024;
    const auto piece = takePropertyPiece(connection, window, property, 0, most);
    if (!piece)
        return std::nullopt;
    return piece->property;
}

TestRequestor::TestRequestor(X11Connection &connection, const char *selection)
    : connection_(connection),
      selection_(connection.atom(selection)),
      property_(connection.atom("TEST_DATA")),
      window_(xcb_generate_id(connection.xcb())) {
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.xcb(), 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    connect(&connection_, &X11Connection::eventReceived, this, &TestRequestor::handleEvent);
}

TestRequestor::~TestRequestor() {
    xcb_destroy_window(connection_.xcb(), window_);
    xcb_flush(connection_.xcb());
}

void TestRequestor::ask(const char *target) {
    isAnswered_ = false;
    isIncremental_ = false;
    answer_.reset();
    chunks = 0;
    xcb_convert_selection(connection_.xcb(), window_, selection_, connection_.atom(target),
                          property_, connection_.serverTime());
    xcb_flush(connection_.xcb());
}

void TestRequestor::askMultiple(const QList<QByteArray> &targets) {
    isAnswered_ = false;
    QList<quint32> pairs;
    for (const QByteArray &target : targets)
        pairs << connection_.atom(target) << connection_.atom("TEST_" + target);
    writeCardinals(connection_, window_, property_, connection_.atom("ATOM_PAIR"), pairs);
    xcb_convert_selection(connection_.xcb(), window_, selection_, connection_.atom("MULTIPLE"),
                          property_, connection_.serverTime());
    xcb_flush(connection_.xcb());
}

std::optional<X11Property> TestRequestor::fetch(const char *target) {
    ask(target);
    if (!waitFor([this] { return isAnswered_; }))
        return std::nullopt;
    return answer_;
}

QList<QByteArray> TestRequestor::fetchTargets() {
    const auto targets = fetch("TARGETS");
    return targets ? connection_.atomNames(targets->cardinals()) : QList<QByteArray>();
}

void TestRequestor::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_SELECTION_NOTIFY) {
        const auto &notify = eventCast<xcb_selection_notify_event_t>(event);
        if (notify.requestor != window_)
            return;
        if (notify.property != XCB_ATOM_NONE)
            answer_ = takeProperty(connection_, window_, property_);
        isIncremental_ = answer_ && answer_->type == connection_.atom("INCR");
        isAnswered_ = !isIncremental_;
        if (isIncremental_)
            answer_ = X11Property{};
        xcb_flush(connection_.xcb());
    } else if (eventType(event) == XCB_PROPERTY_NOTIFY && isIncremental_) {
        const auto &change = eventCast<xcb_property_notify_event_t>(event);
        if (change.window == window_ && change.atom == property_ &&
            change.state == XCB_PROPERTY_NEW_VALUE)
            takeChunk();
    }
}

void TestRequestor::resume() {
    mostChunks = -1;
    takeChunk();
}

void TestRequestor::takeChunk() {
    if (chunks == mostChunks)
        return;
    const auto chunk = takeProperty(connection_, window_, property_);
    xcb_flush(connection_.xcb());
    if (!chunk)
        return;
    ++chunks;
    answer_->type = chunk->type;
    answer_->format = chunk->format;
    answer_->value += chunk->value;
    if (chunk->value.isEmpty()) {
        isIncremental_ = false;
        isAnswered_ = true;
    }
}

} // namespace quillmender::x11
