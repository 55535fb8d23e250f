#include "platform/linux/wayland/clipboard/WaylandLentText.h"

#include "platform/SignalWait.h"
#include "platform/linux/wayland/clipboard/ClipboardText.h"
#include "platform/linux/wayland/clipboard/PipeWriter.h"

#include <algorithm>

namespace quillmender::wayland {

using namespace std::chrono_literals;

namespace {

std::chrono::milliseconds rest(const QDeadlineTimer &deadline) {
    return std::chrono::milliseconds(deadline.remainingTime());
}

} // namespace

WaylandLentText::WaylandLentText(DataControl &control, DataSource &source, PrimaryLoan &primary,
                                 const ChordMoment &chords)
    : source_(&source),
      terminal_(control, source, primary) {
    connect(&chords, &ChordMoment::noted, this, [this] {
        ++chords_;
        underWay_ = 0;
        reading_.begin(std::chrono::steady_clock::now());
    });
    connect(&source, &DataSource::asked, this, &WaylandLentText::handleAsked);
    connect(&source, &DataSource::cancelled, this, &WaylandLentText::end);
    connect(&source, &QObject::destroyed, this, &WaylandLentText::changed);
    connect(&terminal_, &TerminalLoan::lentAsPrimary, this, [this](DataSource *primarySource) {
        primarySource_ = primarySource;
        connect(primarySource, &DataSource::asked, this, &WaylandLentText::handleAsked);
    });
}

QCoro::Task<Obstacle> WaylandLentText::lendToTerminal(TakesLineEnds takesLineEnds) {
    const auto self = shared_from_this();
    co_return co_await terminal_.lend(std::move(takesLineEnds));
}

void WaylandLentText::handleAsked(const QByteArray &type, PipeWriter *transfer) {
    if (chords_ == 0 || type == clipboardManagerMark)
        return;
    ++underWay_;
    connect(transfer, &PipeWriter::finished, this, [this, chord = chords_](bool isComplete) {
        // What was asked for before another chord is no reading of that one.
        if (chord != chords_)
            return;
        --underWay_;
        if (isComplete)
            reading_.note(std::chrono::steady_clock::now());
        Q_EMIT changed();
    });
}

QCoro::Task<bool> WaylandLentText::wasRead(std::chrono::milliseconds limit) {
    const auto self = shared_from_this();
    const QDeadlineTimer deadline(limit, Qt::PreciseTimer);
    const auto canBeRead = [this] { return isOffered() || underWay_ > 0; };
    while (!reading_.isBegun() && canBeRead() && !deadline.hasExpired())
        co_await SignalWait(this, &WaylandLentText::changed, std::max(rest(deadline), 1ms));
    if (reading_.isBegun()) {
        co_await readingIsOver(deadline);
        co_return true;
    }
    if (underWay_ > 0)
        co_return true;
    refuse();
    co_return false;
}

QCoro::Task<> WaylandLentText::readingIsOver(QDeadlineTimer deadline) {
    while (isOffered() && !deadline.hasExpired()) {
        const auto quiet = reading_.rest(std::chrono::steady_clock::now());
        if (quiet <= 0ms && underWay_ == 0)
            co_return;
        const auto next = underWay_ > 0 ? rest(deadline) : std::min(quiet, rest(deadline));
        co_await SignalWait(this, &WaylandLentText::changed, std::max(next, 1ms));
    }
}

void WaylandLentText::end() {
    if (!source_)
        return;
    // Who comes round to the paste only now was not waited for.
    if (!reading_.isBegun() && underWay_ == 0)
        refuse();
    terminal_.end();
    source_->disconnect(this);
    source_ = nullptr;
    if (primarySource_)
        primarySource_->disconnect(this);
    primarySource_ = nullptr;
    Q_EMIT changed();
}

void WaylandLentText::refuse() {
    for (const QPointer<DataSource> &source : {source_, primarySource_})
        if (source)
            source->refuse();
}

} // namespace quillmender::wayland
