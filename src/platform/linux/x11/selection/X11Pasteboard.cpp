#include "platform/linux/x11/selection/X11Pasteboard.h"

#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/selection/ClipboardHandover.h"
#include "platform/linux/x11/selection/LineCopy.h"
#include "platform/linux/x11/selection/SelectionReader.h"
#include "platform/linux/x11/selection/SelectionText.h"
#include "platform/linux/x11/selection/X11LentText.h"
#include "platform/linux/x11/windows/X11RunningApplication.h"

#include <utility>

namespace quillmender::x11 {

X11Pasteboard::X11Pasteboard(X11Connection &connection, const ChordWatch &watch,
                             SelectionReach reach)
    : connection_(connection),
      selections_(connection, watch, reach),
      lateCopy_(connection, watch) {
    connect(&selections_.changes, &ClipboardChanges::foreignOwner, this,
            &X11Pasteboard::handleForeignOwner);
}

X11Pasteboard::~X11Pasteboard() {
    if (lent_)
        lent_->end();
}

void X11Pasteboard::handleForeignOwner(xcb_window_t owner) {
    lastReading_.forget();
    if (const auto items = lateCopy_.undoneFor(owner))
        replaceContents(*items);
}

QCoro::Task<QList<PasteboardItem>> X11Pasteboard::items() {
    // What is left out now is lost to the user.
    constexpr std::chrono::milliseconds longSilence(3000);
    const Reading reading = co_await read(TransferBudget(TransferBudget::most, longSilence));
    lastReading_.remember(reading.items);
    co_return reading.items;
}

QCoro::Task<std::optional<QList<PasteboardItem>>>
X11Pasteboard::itemsWithin(std::chrono::milliseconds limit) {
    const Reading reading = co_await read(TransferBudget(limit));
    if (reading.isCutShort)
        co_return std::nullopt;
    lastReading_.remember(reading.items);
    co_return reading.items;
}

QCoro::Task<X11Pasteboard::Reading> X11Pasteboard::read(TransferBudget budget) {
    if (selections_.clipboard.isStillOwner())
        co_return Reading{toPasteboardItems(connection_, selections_.clipboard.contents())};
    if (lastReading_.isLarge() && !selections_.changes.isAnyUncounted())
        co_return Reading{*lastReading_.items()};
    lastReading_.forget();
    SelectionReader reader(connection_, connection_.atom("CLIPBOARD"));
    const SelectionReader::Reading reading = co_await reader.readAll(budget);
    co_return Reading{toPasteboardItems(connection_, reading.contents), reading.isCutShort};
}

bool X11Pasteboard::isStillThere(const QList<PasteboardItem> &items) {
    return lastReading_.items() == items && !selections_.changes.isAnyUncounted();
}

QCoro::Task<std::optional<QString>> X11Pasteboard::string() {
    if (selections_.clipboard.isStillOwner())
        co_return findText(connection_, selections_.clipboard.contents());
    SelectionReader reader(connection_, connection_.atom("CLIPBOARD"));
    const std::optional<QString> text = co_await reader.readText();
    if (!text)
        co_return std::nullopt;
    const bool isOfEditor = co_await wasLineCopied(connection_, *text);
    if (isOfEditor) {
        qCInfo(x11Log, "a line was copied without being selected");
        co_return std::nullopt;
    }
    co_return text;
}

void X11Pasteboard::replaceContents(const QList<PasteboardItem> &items) {
    endLoan();
    lateCopy_.expect(items);
    if (isStillThere(items)) {
        selections_.changes.countOwn();
        return;
    }
    lastReading_.forget();
    SelectionContents contents = toSelectionContents(connection_, items);
    if (contents.isEmpty()) {
        selections_.changes.countRelease(selections_.clipboard.release());
        return;
    }
    selections_.clipboard.own(std::move(contents));
    selections_.changes.countOwn();
}

LentTextRef X11Pasteboard::lend(const QString &text, RunningApplicationRef reader) {
    endLoan();
    lateCopy_.forget();
    selections_.late.forgive();
    lastReading_.forget();
    const auto application = std::dynamic_pointer_cast<const X11RunningApplication>(reader);
    const xcb_window_t window = application ? application->window() : xcb_window_t{XCB_WINDOW_NONE};
    if (!selections_.clipboard.own(makeTemporaryText(connection_, text), window))
        return nullptr;
    selections_.changes.countOwn();
    lent_ = std::make_shared<X11LentText>(selections_, window);
    return lent_;
}

void X11Pasteboard::endLoan() {
    if (!lent_)
        return;
    std::exchange(lent_, nullptr)->end();
    selections_.primary.giveBack();
}

QCoro::Task<> X11Pasteboard::handOver() {
    if (selections_.clipboard.isOwner() && !lent_)
        co_await handOverClipboard(connection_, selections_.clipboard.contents());
}

} // namespace quillmender::x11
