#include "platform/linux/wayland/clipboard/WaylandPasteboard.h"

#include "platform/linux/MaskedText.h"
#include "platform/linux/wayland/clipboard/ClipboardHandover.h"
#include "platform/linux/wayland/clipboard/ClipboardText.h"
#include "platform/linux/wayland/clipboard/DataSource.h"
#include "platform/linux/wayland/clipboard/LineCopy.h"
#include "platform/linux/wayland/clipboard/SelectionReader.h"
#include "platform/linux/wayland/clipboard/WaylandLentText.h"

#include <QLoggingCategory>
#include <QPointer>

#include <utility>

namespace quillmender::wayland {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)
} // namespace

WaylandPasteboard::WaylandPasteboard(DataControl &control, const ChordMoment &chords,
                                     const CopyWatch &copies)
    : control_(control),
      chords_(chords),
      owner_(control, Selection::clipboard),
      primary_(control),
      lateCopy_(control, copies) {
    connect(&owner_, &SelectionOwner::changedByOthers, this,
            &WaylandPasteboard::handleChangeByOthers);
    connect(&lateCopy_, &LateCopy::came, this, &WaylandPasteboard::replaceContents);
}

WaylandPasteboard::~WaylandPasteboard() {
    endLoan();
}

void WaylandPasteboard::handleChangeByOthers() {
    ++changes_;
    lastReading_.forget();
    const auto items = std::exchange(left_, std::nullopt);
    if (!items)
        return lateCopy_.noteChange();
    // It was made before the contents were put back, and is undone by that.
    lateCopy_.forget();
    replaceContents(*items);
}

QCoro::Task<QList<PasteboardItem>> WaylandPasteboard::items() {
    const QPointer<WaylandPasteboard> self(this);
    // What is left out now is lost to the user.
    constexpr std::chrono::milliseconds longSilence(3000);
    const Reading reading = co_await read(TransferBudget(TransferBudget::most, longSilence));
    if (self)
        lastReading_.remember(reading.items);
    co_return reading.items;
}

QCoro::Task<std::optional<QList<PasteboardItem>>>
WaylandPasteboard::itemsWithin(std::chrono::milliseconds limit) {
    const QPointer<WaylandPasteboard> self(this);
    const Reading reading = co_await read(TransferBudget(limit));
    if (reading.isCutShort)
        co_return std::nullopt;
    if (self)
        lastReading_.remember(reading.items);
    co_return reading.items;
}

QCoro::Task<WaylandPasteboard::Reading> WaylandPasteboard::read(TransferBudget budget) {
    const QPointer<WaylandPasteboard> self(this);
    co_await control_.catchUp(budget.untilLimit());
    if (!self)
        co_return Reading{};
    if (owner_.isOwner())
        co_return Reading{toPasteboardItems(owner_.contents())};
    if (lastReading_.isLarge())
        co_return Reading{*lastReading_.items()};
    lastReading_.forget();
    SelectionReader reader(control_, Selection::clipboard);
    const SelectionReader::Reading reading = co_await reader.readAll(budget);
    co_return Reading{toPasteboardItems(reading.contents), reading.isCutShort};
}

QCoro::Task<std::optional<QString>> WaylandPasteboard::string() {
    const QPointer<WaylandPasteboard> self(this);
    DataControl &control = control_;
    co_await control.catchUp();
    if (!self)
        co_return std::nullopt;
    if (owner_.isOwner())
        co_return findText(owner_.contents());
    SelectionReader reader(control, Selection::clipboard);
    const std::optional<QString> text = co_await reader.readText();
    if (!text)
        co_return std::nullopt;
    if (text->size() > 1 && isMask(*text)) {
        qCInfo(log, "what was copied is masked");
        co_return std::nullopt;
    }
    const bool isOfEditor = co_await wasLineCopied(control, *text);
    if (isOfEditor) {
        qCInfo(log, "a line was copied without being selected");
        co_return std::nullopt;
    }
    co_return text;
}

void WaylandPasteboard::replaceContents(const QList<PasteboardItem> &items) {
    const bool wasLent = lent_ != nullptr;
    endLoan();
    ++changes_;
    left_.reset();
    lateCopy_.expect(items);
    if (!wasLent && lastReading_.items() == items) {
        leaveToOwner(items);
        return;
    }
    lastReading_.forget();
    OfferedContents contents = toOfferedContents(items);
    if (contents.isEmpty())
        owner_.clear();
    else
        owner_.own(std::move(contents));
}

void WaylandPasteboard::leaveToOwner(const QList<PasteboardItem> &items) {
    if (owner_.isOwner())
        return;
    left_ = items;
    control_.afterRoundTrip(this, [this, leaving = ++leavings_] {
        if (leaving == leavings_)
            left_.reset();
    });
}

LentTextRef WaylandPasteboard::lend(const QString &text, RunningApplicationRef reader) {
    Q_UNUSED(reader)
    endLoan();
    left_.reset();
    lateCopy_.forget();
    lastReading_.forget();
    DataSource *const source = owner_.own(makeTemporaryText(text));
    if (!source)
        return nullptr;
    ++changes_;
    lent_ = std::make_shared<WaylandLentText>(control_, *source, primary_, chords_);
    return lent_;
}

void WaylandPasteboard::endLoan() {
    if (lent_)
        std::exchange(lent_, nullptr)->end();
    primary_.giveBack();
}

QCoro::Task<> WaylandPasteboard::handOver() {
    if (lent_ || !owner_.isOwner())
        co_return;
    const auto isStillOurs = [owner = QPointer(&owner_)] { return owner && owner->isOwner(); };
    co_await handOverClipboard(owner_.contents(), isStillOurs);
}

} // namespace quillmender::wayland
