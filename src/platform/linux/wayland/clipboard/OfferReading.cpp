#include "platform/linux/wayland/clipboard/OfferReading.h"

#include "platform/linux/wayland/clipboard/PipeReader.h"

#include <QLoggingCategory>

#include <algorithm>

namespace quillmender::wayland {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)

/// So many files fit into what the connection sends at once, and leave others their share.
constexpr int mostAtOnce = 24;

/// What a pipe takes at once: an owner has written it all, or nothing, when something ends it.
constexpr qsizetype oneWriting = qsizetype{64} * 1024;

} // namespace

OfferReading::OfferReading(DataControl &control, Selection selection, const TransferBudget &budget,
                           const TransferBounds &bounds)
    : QObject(&control),
      control_(control),
      selection_(selection),
      offer_(control.offer(selection)),
      budget_(budget),
      bounds_(bounds) {
    deadline_.setSingleShot(true);
    deadline_.setTimerType(Qt::PreciseTimer);
    connect(&deadline_, &QTimer::timeout, this, &OfferReading::handleDeadline);
    connect(&control_, &DataControl::offered, this, &OfferReading::handleOffer);
    connect(&control_, &DataControl::ended, this, [this] {
        isGivenUp_ = true;
        settle();
    });
}

OfferReading::~OfferReading() = default;

void OfferReading::request(const QList<QByteArray> &types) {
    for (const QByteArray &type : types)
        transfers_.push_back({type, nullptr});
    requestMore();
    handleAdvance();
}

void OfferReading::requestMore() {
    auto running = std::ranges::count_if(
        transfers_, [](const Transfer &each) { return each.reader && !each.reader->isOver(); });
    for (Transfer &each : transfers_) {
        if (each.reader || running >= mostAtOnce || isGivenUp_)
            continue;
        each.reader = std::make_unique<PipeReader>(offer_->receive(each.type), bounds_.perTarget);
        connect(each.reader.get(), &PipeReader::advanced, this, &OfferReading::handleAdvance);
        ++running;
    }
}

void OfferReading::handleOffer(Selection changed) {
    const std::shared_ptr<DataOffer> offered = control_.offer(selection_);
    if (changed != selection_ || offered == offer_ || isSettled_)
        return;
    // A file manager gives cut files up while it hands them over: its answers are under way.
    isGivenUp_ = !offered;
    isOwnerReplaced_ = !isGivenUp_;
    if (isGivenUp_)
        handleAdvance();
    else
        settle();
}

void OfferReading::handleAdvance() {
    if (isSettled_)
        return;
    while (received() > bounds_.total && dropLargest())
        qCWarning(log, "a selection's owner sends without end");
    requestMore();
    const auto answers =
        std::ranges::count_if(transfers_, [this](const auto &each) { return isAnswered(each); });
    budget_.noteProgress(answers, received());
    if (answers == std::ssize(transfers_))
        return settle();
    confirmEnds();
    waitForAnswers();
}

void OfferReading::confirmEnds() {
    if (isConfirming_ || isGivenUp_)
        return;
    QList<size_t> ends;
    for (size_t i = 0; i < transfers_.size(); ++i) {
        const Transfer &each = transfers_[i];
        if (each.reader && each.reader->isAtEnd() && !each.isBelieved)
            ends.append(i);
    }
    if (ends.isEmpty())
        return;
    isConfirming_ = true;
    control_.afterRoundTrip(this, [this, ends] {
        isConfirming_ = false;
        if (isGivenUp_)
            return;
        for (const size_t i : ends)
            transfers_[i].isBelieved = true;
        handleAdvance();
    });
}

void OfferReading::waitForAnswers() {
    constexpr std::chrono::milliseconds afterGivingUp(200);
    const std::chrono::milliseconds remaining = budget_.remaining();
    // Owners that are quick enough would keep a timer from its turn.
    if (remaining <= std::chrono::milliseconds(0))
        return handleDeadline();
    deadline_.start(isGivenUp_ ? std::min(remaining, afterGivingUp) : remaining);
}

bool OfferReading::isComplete(const Transfer &transfer) const {
    if (!transfer.reader || !transfer.reader->isAtEnd())
        return false;
    const qsizetype size = transfer.reader->data().size();
    return transfer.isBelieved || !isGivenUp_ || (size > 0 && size < oneWriting);
}

bool OfferReading::isAnswered(const Transfer &transfer) const {
    if (!transfer.reader)
        return isGivenUp_;
    const bool isInDoubt = !isGivenUp_ && transfer.reader->isAtEnd() && !transfer.isBelieved;
    return transfer.reader->isOver() && !isInDoubt;
}

OfferedContents OfferReading::contents() const {
    OfferedContents contents;
    for (const Transfer &each : transfers_) {
        if (isComplete(each))
            contents.append({each.type, each.reader->data()});
    }
    return contents;
}

qsizetype OfferReading::received() const {
    qsizetype sum = 0;
    for (const Transfer &each : transfers_)
        sum += each.reader ? each.reader->data().size() : 0;
    return sum;
}

bool OfferReading::dropLargest() {
    PipeReader *largest = nullptr;
    for (const Transfer &each : transfers_) {
        PipeReader *const reader = each.reader.get();
        if (reader && !reader->isOver() &&
            (!largest || reader->data().size() > largest->data().size()))
            largest = reader;
    }
    if (!largest)
        return false;
    const QSignalBlocker quiet(largest);
    largest->drop();
    return true;
}

void OfferReading::handleDeadline() {
    constexpr std::chrono::milliseconds none(0);
    // Timers may be a little early.
    if (!isGivenUp_ && budget_.remaining() > none)
        return waitForAnswers();
    isCutShort_ = !isGivenUp_ || budget_.untilLimit() <= none;
    settle();
}

void OfferReading::settle() {
    if (isSettled_)
        return;
    isSettled_ = true;
    deadline_.stop();
    // Whoever has just requested does not listen yet.
    QMetaObject::invokeMethod(this, &OfferReading::settled, Qt::QueuedConnection);
}

} // namespace quillmender::wayland
