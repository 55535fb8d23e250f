#include "platform/linux/x11/selection/TerminalLoan.h"

#include "platform/linux/terminal/TerminalText.h"
#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/selection/OwnSelections.h"
#include "platform/linux/x11/selection/SelectionReader.h"
#include "platform/linux/x11/selection/SelectionText.h"

namespace quillmender::x11 {

using namespace std::chrono_literals;

TerminalLoan::TerminalLoan(OwnSelections &selections, xcb_window_t reader)
    : selections_(&selections),
      reader_(reader) {
    for (SelectionOwner *owner : {&selections.clipboard, &selections.primary.owner()})
        connect(owner, &SelectionOwner::asked, this, &TerminalLoan::keepToOneLine);
}

QCoro::Task<Obstacle> TerminalLoan::lend(TakesLineEnds takesLineEnds) {
    const auto taken = QStringLiteral("somebody else took a selection");
    // Somebody else's contents would be pasted.
    if (!selections_ || !selections_->clipboard.isOwner())
        co_return taken;
    X11Connection &connection = selections_->connection;
    TerminalText made = makeTerminalText(
        findText(connection, selections_->clipboard.contents()).value_or(QString()));
    if (made.text.isEmpty())
        co_return QStringLiteral("the terminal does not take what is no text");
    const bool isTaken = (!made.hasSeveralLines && !made.hasTabs) || takesLineEnds();
    if (made.hasSeveralLines && !isTaken)
        co_return QStringLiteral("the terminal does not take several lines");
    if (!isTaken) {
        made.text = onOneLine(made.text);
    } else if (made.hasSeveralLines || made.hasTabs) {
        oneLine_ = makeTemporaryText(connection, onOneLine(made.text));
        takesLineEnds_ = std::move(takesLineEnds);
    }
    const SelectionContents contents = makeTemporaryText(connection, made.text);
    if (!selections_->clipboard.own(contents, reader_))
        co_return taken;
    selections_->changes.countOwn();
    std::optional<SelectionContents> before = selections_->primary.before();
    if (!before) {
        SelectionReader reader(connection, XCB_ATOM_PRIMARY);
        // The paste waits for it.
        const SelectionReader::Reading reading = co_await reader.readAll(TransferBudget(1s));
        before = reading.contents;
    }
    // Whoever replaced the pasteboard meanwhile wants PRIMARY as it is.
    if (!selections_)
        co_return QStringLiteral("the pasteboard was replaced meanwhile");
    selections_->primary.take(contents, std::move(*before), reader_);
    if (!selections_->primary.owner().isOwner())
        co_return taken;
    co_return std::nullopt;
}

bool TerminalLoan::isLent() const {
    return selections_ && selections_->clipboard.isStillOwner() &&
           selections_->primary.owner().isStillOwner();
}

void TerminalLoan::end() {
    if (!selections_)
        return;
    selections_->clipboard.disconnect(this);
    selections_->primary.owner().disconnect(this);
    selections_ = nullptr;
}

void TerminalLoan::keepToOneLine() {
    if (!takesLineEnds_ || takesLineEnds_())
        return;
    takesLineEnds_ = nullptr;
    qCInfo(x11Log, "the terminal does not take line ends and tabs any more");
    selections_->clipboard.exchange(oneLine_);
    selections_->primary.owner().exchange(oneLine_);
}

} // namespace quillmender::x11
