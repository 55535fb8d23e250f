#include "platform/linux/x11/X11Pasteboard.h"

#include "platform/SignalWait.h"
#include "platform/linux/terminal/TerminalText.h"
#include "platform/linux/x11/ChordWatch.h"
#include "platform/linux/x11/ClientIdentity.h"
#include "platform/linux/x11/ClipboardHandover.h"
#include "platform/linux/x11/CopiedLine.h"
#include "platform/linux/x11/SelectionReader.h"
#include "platform/linux/x11/SelectionText.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Log.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <utility>

namespace quillmender {

using namespace std::chrono_literals;

X11Pasteboard::X11Pasteboard(X11Connection &connection, const PasteRecord &pastes,
                             const ChordWatch &chords)
    : connection_(connection),
      pastes_(pastes),
      chords_(chords),
      owner_(connection, connection.atom("CLIPBOARD"), pastes),
      primary_(connection, pastes) {
    connect(&connection_, &X11Connection::eventReceived, this, &X11Pasteboard::handleEvent);
    connect(&owner_, &SelectionOwner::served, this, &X11Pasteboard::handleServed);
    connect(&primary_.owner(), &SelectionOwner::served, this, &X11Pasteboard::handleServed);
    connect(&owner_, &SelectionOwner::asked, this, &X11Pasteboard::keepToOneLine);
    connect(&primary_.owner(), &SelectionOwner::asked, this, &X11Pasteboard::keepToOneLine);
    connect(&chords_, &ChordWatch::settled, this, [this] {
        untilLateCopy_.reset();
        // Refused one target, an application asks for the next.
        stopRefusing_.start(1s);
    });
    stopRefusing_.setSingleShot(true);
    connect(&stopRefusing_, &QTimer::timeout, this, [this] { refuse(XCB_WINDOW_NONE); });
    forgetRead_.setSingleShot(true);
    connect(&forgetRead_, &QTimer::timeout, this, &X11Pasteboard::forgetRead);
    xcb_xfixes_select_selection_input(connection_.xcb(), connection_.window(),
                                      connection_.atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
}

void X11Pasteboard::handleEvent(const xcb_generic_event_t *event) {
    if (!isForeignChange(event))
        return;
    ++changeCount_;
    lastRead_.reset();
    if (untilLateCopy_)
        handleLateCopy(eventCast<xcb_xfixes_selection_notify_event_t>(event).owner);
}

bool X11Pasteboard::isForeignChange(const xcb_generic_event_t *event) const {
    if (eventType(event) != connection_.fixesFirstEvent() + XCB_XFIXES_SELECTION_NOTIFY)
        return false;
    const auto &change = eventCast<xcb_xfixes_selection_notify_event_t>(event);
    if (change.selection != connection_.atom("CLIPBOARD") || change.window != connection_.window())
        return false;
    // Our own changes were counted when they were made.
    const bool isOurs = change.owner == connection_.window() ||
                        (change.owner == XCB_WINDOW_NONE && releasedAt_ != XCB_CURRENT_TIME &&
                         change.selection_timestamp == releasedAt_);
    return !isOurs;
}

QCoro::Task<QList<PasteboardItem>> X11Pasteboard::items() {
    // What is left out now is lost to the user.
    constexpr std::chrono::milliseconds longSilence(3000);
    const Reading reading = co_await read(TransferBudget(TransferBudget::most, longSilence));
    rememberRead(reading.items);
    co_return reading.items;
}

QCoro::Task<std::optional<QList<PasteboardItem>>>
X11Pasteboard::itemsWithin(std::chrono::milliseconds limit) {
    const Reading reading = co_await read(TransferBudget(limit));
    if (reading.isCutShort)
        co_return std::nullopt;
    rememberRead(reading.items);
    co_return reading.items;
}

QCoro::Task<X11Pasteboard::Reading> X11Pasteboard::read(TransferBudget budget) {
    if (isCleared_)
        co_return Reading{};
    if (owner_.isStillOwner())
        co_return Reading{toPasteboardItems(connection_, owner_.contents())};
    if (isLastReadLarge() && isUnchangedSinceRead())
        co_return Reading{*lastRead_};
    lastRead_.reset();
    SelectionReader reader(connection_, connection_.atom("CLIPBOARD"));
    const SelectionReader::Reading reading = co_await reader.readAll(budget);
    co_return Reading{toPasteboardItems(connection_, reading.contents), reading.isCutShort};
}

void X11Pasteboard::rememberRead(const QList<PasteboardItem> &items) {
    lastRead_ = items;
    forgetRead_.start(10s);
}

bool X11Pasteboard::isLastReadLarge() const {
    constexpr qsizetype large = qsizetype{16} * 1024 * 1024;
    qsizetype size = 0;
    for (const PasteboardItem &item : lastRead_.value_or(QList<PasteboardItem>())) {
        for (const PasteboardRepresentation &each : item.representations())
            size += each.data.size();
    }
    return size >= large;
}

void X11Pasteboard::forgetRead() {
    // A session that is open holds the same bytes, which the next one need not have again.
    if (isLastReadLarge() && !lastRead_->isDetached())
        forgetRead_.start(10s);
    else
        lastRead_.reset();
}

bool X11Pasteboard::isStillAsRead(const QList<PasteboardItem> &items) const {
    return lastRead_ && *lastRead_ == items && isUnchangedSinceRead();
}

bool X11Pasteboard::isUnchangedSinceRead() const {
    // After a round trip every change that the server knows of is at hand.
    connection_.serverTime();
    return !connection_.isPending([this](const auto *event) { return isForeignChange(event); });
}

QCoro::Task<std::optional<QString>> X11Pasteboard::string() {
    if (isCleared_)
        co_return std::nullopt;
    if (owner_.isStillOwner())
        co_return findText(connection_, owner_.contents());
    SelectionReader reader(connection_, connection_.atom("CLIPBOARD"));
    const std::optional<QString> text = co_await reader.readText();
    if (!text)
        co_return std::nullopt;
    const bool isOfEditor = co_await isCopiedLine(connection_, *text);
    if (isOfEditor) {
        qCInfo(x11Log, "a line was copied without being selected");
        co_return std::nullopt;
    }
    co_return text;
}

void X11Pasteboard::clearContents() {
    takesLineEnds_ = nullptr;
    primary_.giveBack();
    ++changeCount_;
    isTemporary_ = false;
    if (isCleared_)
        return;
    isCleared_ = true;
    QMetaObject::invokeMethod(this, &X11Pasteboard::finishClear, Qt::QueuedConnection);
}

void X11Pasteboard::finishClear() {
    if (!isCleared_)
        return;
    isCleared_ = false;
    expectLateCopy({});
    if (isStillAsRead({}))
        return;
    lastRead_.reset();
    releasedAt_ = owner_.release();
}

void X11Pasteboard::expectLateCopy(const QList<PasteboardItem> &items) {
    if (chords_.pending(Chord::copy) != XCB_WINDOW_NONE)
        untilLateCopy_ = items;
}

void X11Pasteboard::handleLateCopy(xcb_window_t owner) {
    const QList<PasteboardItem> items = *std::exchange(untilLateCopy_, std::nullopt);
    // What the user copied elsewhere meanwhile is theirs.
    const xcb_window_t late = chords_.pending(Chord::copy);
    if (owner == XCB_WINDOW_NONE || !isSameApplication(connection_, owner, late))
        return;
    qCInfo(x11Log, "window 0x%x copied too late", late);
    clearContents();
    if (!items.isEmpty())
        writeItems(items);
}

bool X11Pasteboard::writeItems(const QList<PasteboardItem> &items) {
    expectLateCopy(items);
    if (isCleared_ && isStillAsRead(items)) {
        isCleared_ = false;
        return true;
    }
    SelectionContents contents = toSelectionContents(connection_, items);
    // Nothing to offer is no reason to own the clipboard; a clear under way takes its course.
    if (contents.isEmpty())
        return true;
    return write(std::move(contents), SelectionOwner::Audience::everybody);
}

bool X11Pasteboard::setString(const QString &text) {
    untilLateCopy_.reset();
    stopRefusing_.stop();
    refuse(XCB_WINDOW_NONE);
    const bool isWritten =
        write(makeTemporaryText(connection_, text), SelectionOwner::Audience::sourceOfPaste);
    isTemporary_ = isWritten;
    pastesBefore_ = pastes_.count;
    earlyReaders_.clear();
    return isWritten;
}

bool X11Pasteboard::write(SelectionContents contents, SelectionOwner::Audience audience) {
    takesLineEnds_ = nullptr;
    primary_.giveBack();
    if (!owner_.own(std::move(contents), audience))
        return false;
    isCleared_ = false;
    isTemporary_ = false;
    lastRead_.reset();
    ++changeCount_;
    return true;
}

void X11Pasteboard::handleServed(xcb_window_t requestor, quint64 paste) {
    const bool isOfPaste = paste == pastes_.count && paste != pastesBefore_;
    if (paste == pastesBefore_)
        earlyReaders_.insert(requestor);
    if (!isOfPaste || !isActingFor(connection_, requestor, pastes_.window))
        return;
    servedPaste_ = pastes_.count;
    sinceServed_.start();
    Q_EMIT pasteServed();
}

bool X11Pasteboard::isRead() const {
    return pastes_.count != pastesBefore_ && servedPaste_ == pastes_.count;
}

QCoro::Task<bool> X11Pasteboard::stringWasRead(std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit, Qt::PreciseTimer);
    if (!isRead() && isTemporary_)
        co_await SignalWait(this, &X11Pasteboard::pasteServed, limit);
    if (isRead()) {
        co_await readingIsOver(deadline);
        co_return true;
    }
    const xcb_window_t late = chords_.pending(Chord::paste);
    if (late != XCB_WINDOW_NONE) {
        qCInfo(x11Log, "window 0x%x did not attend to the paste", late);
        stopRefusing_.stop();
        refuse(late);
        co_return false;
    }
    const bool wasReadEarly =
        std::any_of(earlyReaders_.cbegin(), earlyReaders_.cend(), [this](xcb_window_t reader) {
            return isActingFor(connection_, reader, pastes_.window);
        });
    if (!wasReadEarly)
        qCInfo(x11Log, "window 0x%x did not ask for what was to be pasted", pastes_.window);
    co_return wasReadEarly;
}

QCoro::Task<> X11Pasteboard::readingIsOver(QDeadlineTimer deadline) {
    // Chromium reads more than once for one paste, and pastes what it read last.
    constexpr auto quiet = 80ms;
    while (!deadline.hasExpired() && !sinceServed_.hasExpired(quiet.count())) {
        const std::chrono::milliseconds rest(quiet.count() - sinceServed_.elapsed());
        const std::chrono::milliseconds allowed(deadline.remainingTime());
        co_await SignalWait(this, &X11Pasteboard::pasteServed,
                            std::max(std::min(rest, allowed), 1ms));
    }
}

void X11Pasteboard::refuse(xcb_window_t window) {
    owner_.refuse(window);
    primary_.refuse(window);
}

QCoro::Task<bool> X11Pasteboard::lendToTerminal(TakesLineEnds takesLineEnds) {
    // Without it somebody else's contents would be pasted.
    if (!isTemporary_ || !owner_.isOwner())
        co_return false;
    TerminalText made =
        makeTerminalText(findText(connection_, owner_.contents()).value_or(QString()));
    const bool isTaken = (!made.hasSeveralLines && !made.hasTabs) || takesLineEnds();
    if (made.text.isEmpty() || (made.hasSeveralLines && !isTaken)) {
        qCInfo(x11Log, "the terminal does not take %s",
               made.text.isEmpty() ? "what is no text" : "several lines");
        co_return false;
    }
    if (!isTaken) {
        made.text = onOneLine(made.text);
    } else if (made.hasSeveralLines || made.hasTabs) {
        oneLine_ = makeTemporaryText(connection_, onOneLine(made.text));
        takesLineEnds_ = std::move(takesLineEnds);
    }
    const SelectionContents contents = makeTemporaryText(connection_, made.text);
    if (!owner_.own(contents, SelectionOwner::Audience::sourceOfPaste))
        co_return false;
    ++changeCount_;
    co_await primary_.take(contents);
    co_return primary_.owner().isOwner();
}

void X11Pasteboard::keepToOneLine() {
    if (!takesLineEnds_ || takesLineEnds_())
        return;
    takesLineEnds_ = nullptr;
    qCInfo(x11Log, "the terminal does not take line ends and tabs any more");
    owner_.exchange(oneLine_);
    primary_.exchange(oneLine_);
}

QCoro::Task<> X11Pasteboard::handOver() {
    finishClear();
    if (owner_.isOwner() && !isTemporary_)
        co_await handOverClipboard(connection_, owner_.contents());
}

} // namespace quillmender
