#include "platform/linux/x11/selection/SelectionConversion.h"

#include "platform/linux/x11/X11Connection.h"

#include <algorithm>

namespace quillmender::x11 {

using namespace std::chrono_literals;

SelectionConversion::SelectionConversion(X11Connection &connection, xcb_atom_t selection,
                                         xcb_atom_t target, xcb_timestamp_t time, qsizetype most,
                                         const QList<quint32> &parameter)
    : connection_(connection),
      selection_(selection),
      target_(target),
      most_(most),
      property_(connection.atom("_QUILLMENDER_DATA")),
      window_(xcb_generate_id(connection.xcb())) {
    nextPiece_.setSingleShot(true);
    connect(&nextPiece_, &QTimer::timeout, this, &SelectionConversion::readOn);
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
    left->drop();
    const auto removeWhenAnswered = [left] {
        if (left->isAnswered())
            left->deleteLater();
    };
    connect(left, &SelectionConversion::advanced, left, removeWhenAnswered);
    QTimer::singleShot(30s, left, &QObject::deleteLater);
    removeWhenAnswered();
}

void SelectionConversion::handleEvent(const xcb_generic_event_t *event) {
    if (eventType(event) == XCB_SELECTION_NOTIFY && state_ == State::waiting) {
        const auto &answer = eventCast<xcb_selection_notify_event_t>(event);
        const bool isMine = answer.requestor == window_ && answer.selection == selection_ &&
                            answer.target == target_;
        if (isMine && answer.property == property_)
            beginReading(State::reading);
        else if (isMine)
            advance(State::refused);
    } else if (eventType(event) == XCB_PROPERTY_NOTIFY && state_ == State::incremental) {
        const auto &change = eventCast<xcb_property_notify_event_t>(event);
        const bool isMine = change.window == window_ && change.atom == property_ &&
                            change.state == XCB_PROPERTY_NEW_VALUE;
        if (isMine)
            beginReading(State::readingChunk);
    }
}

void SelectionConversion::beginReading(State state) {
    state_ = state;
    offset_ = 0;
    if (isDropped_)
        discard();
    else
        readOn();
}

void SelectionConversion::readOn() {
    // Owners may write more at once than the loop should be held up for.
    constexpr qsizetype pieceBytes = qsizetype{4} * 1024 * 1024;
    const auto piece = takePropertyPiece(connection_, window_, property_, offset_, pieceBytes);
    if (piece)
        receive(*piece);
    else if (state_ == State::readingChunk && offset_ == 0)
        state_ = State::incremental;
    else
        advance(State::refused);
}

bool SelectionConversion::fits(const X11PropertyPiece &piece) const {
    const X11Property &property = piece.property;
    // Chunks of different sorts do not make one value.
    const bool isOfSameSort = result_.type == XCB_ATOM_NONE ||
                              (property.type == result_.type && property.format == result_.format);
    return isOfSameSort && received() + property.value.size() + piece.left <= most_;
}

void SelectionConversion::receive(const X11PropertyPiece &piece) {
    const X11Property &property = piece.property;
    const bool isWhole = piece.left == 0;
    const bool isEmpty = isWhole && offset_ == 0 && property.value.isEmpty();
    if (isEmpty && state_ == State::readingChunk && result_.type != XCB_ATOM_NONE)
        return advance(State::done);
    if (state_ == State::reading && property.type == connection_.atom("INCR")) {
        state_ = State::incremental;
        // The owner has said how much it will be at least.
        if (property.cardinals().value(0) > most_)
            drop();
        return advance(state_);
    }
    if (!fits(piece))
        return drop();
    result_.type = property.type;
    result_.format = property.format;
    // Qt copies everything when it makes room by itself; what is asked for is moved by the system.
    const qsizetype needed = received() + property.value.size();
    if (received() > 0 && needed > result_.value.capacity())
        result_.value.reserve(std::max(2 * result_.value.capacity(), needed));
    result_.value += property.value;
    offset_ += property.value.size();
    if (!isWhole) {
        nextPiece_.start(0);
        Q_EMIT advanced();
        return;
    }
    const bool isMoreToCome = state_ == State::readingChunk && !isEmpty;
    advance(isMoreToCome ? State::incremental : State::done);
}

void SelectionConversion::drop() {
    isDropped_ = true;
    nextPiece_.stop();
    result_ = {};
    if (state_ == State::reading || state_ == State::readingChunk)
        discard();
}

void SelectionConversion::discard() {
    // What has no end is not waited for.
    constexpr qsizetype mostDiscarded = qsizetype{1024} * 1024 * 1024;
    const auto found = measureProperty(connection_, window_, property_);
    const qsizetype size = found ? found->left : 0;
    const bool isChunk = state_ == State::readingChunk;
    const bool isIncremental = found && found->property.type == connection_.atom("INCR");
    discarded_ += size;
    if (discarded_ > mostDiscarded) {
        disconnect(&connection_, nullptr, this, nullptr);
        return;
    }
    xcb_delete_property(connection_.xcb(), window_, property_);
    const bool isMoreToCome = isChunk ? !found || size > 0 : isIncremental;
    advance(isMoreToCome ? State::incremental : State::done);
}

void SelectionConversion::advance(State state) {
    state_ = state;
    xcb_flush(connection_.xcb());
    Q_EMIT advanced();
}

} // namespace quillmender::x11
