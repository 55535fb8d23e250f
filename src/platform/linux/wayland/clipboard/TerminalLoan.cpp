#include "platform/linux/wayland/clipboard/TerminalLoan.h"

#include "platform/linux/terminal/TerminalText.h"
#include "platform/linux/wayland/clipboard/ClipboardText.h"
#include "platform/linux/wayland/clipboard/PrimaryLoan.h"
#include "platform/linux/wayland/clipboard/SelectionReader.h"

#include <QLoggingCategory>

namespace quillmender::wayland {

using namespace std::chrono_literals;

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.wayland", QtWarningMsg)
} // namespace

TerminalLoan::TerminalLoan(DataControl &control, DataSource &clipboard, PrimaryLoan &primary)
    : control_(control),
      primary_(primary),
      clipboardSource_(&clipboard) {
    connect(&clipboard, &DataSource::beingAsked, this, &TerminalLoan::keepToOneLine);
}

QCoro::Task<Obstacle> TerminalLoan::lend(PasteText::TakesLineEnds takesLineEnds) {
    const auto taken = QStringLiteral("somebody else took a selection");
    // Somebody else's contents would be pasted.
    if (!clipboardSource_)
        co_return taken;
    if (!control_.hasPrimary())
        co_return QStringLiteral("this compositor does not let the text be a selection");
    TerminalText made =
        makeTerminalText(findText(clipboardSource_->contents()).value_or(QString()));
    if (made.text.isEmpty())
        co_return QStringLiteral("the terminal does not take what is no text");
    const bool isTaken = (!made.hasSeveralLines && !made.hasTabs) || takesLineEnds();
    if (made.hasSeveralLines && !isTaken)
        co_return QStringLiteral("the terminal does not take several lines");
    if (!isTaken) {
        made.text = onOneLine(made.text);
    } else if (made.hasSeveralLines || made.hasTabs) {
        oneLine_ = makeTemporaryText(onOneLine(made.text));
        takesLineEnds_ = std::move(takesLineEnds);
    }
    const OfferedContents contents = makeTemporaryText(made.text);
    clipboardSource_->exchange(contents);
    const QPointer<TerminalLoan> self(this);
    std::optional<OfferedContents> before = primary_.before();
    if (!before) {
        SelectionReader reader(control_, Selection::primary);
        // The paste waits for it.
        const SelectionReader::Reading reading = co_await reader.readAll(TransferBudget(1s));
        if (!self)
            co_return QStringLiteral("the pasteboard was replaced meanwhile");
        before = reading.contents;
    }
    // Whoever replaced the pasteboard meanwhile wants PRIMARY as it is.
    if (!clipboardSource_)
        co_return QStringLiteral("the pasteboard was replaced meanwhile");
    primarySource_ = primary_.take(contents, std::move(*before));
    if (!primarySource_)
        co_return taken;
    connect(primarySource_, &DataSource::beingAsked, this, &TerminalLoan::keepToOneLine);
    Q_EMIT lentAsPrimary(primarySource_);
    // The X server of old programs learns it from the compositor; the keys must not be there first.
    DataControl &control = control_;
    co_await control.catchUp();
    if (!self || !isLent())
        co_return QStringLiteral("the pasteboard was replaced meanwhile");
    co_return std::nullopt;
}

bool TerminalLoan::isLent() const {
    return clipboardSource_ && primarySource_ && primary_.isOwner();
}

void TerminalLoan::end() {
    for (const QPointer<DataSource> &source : {clipboardSource_, primarySource_})
        if (source)
            source->disconnect(this);
    clipboardSource_ = nullptr;
    primarySource_ = nullptr;
}

void TerminalLoan::keepToOneLine() {
    if (!takesLineEnds_ || takesLineEnds_())
        return;
    takesLineEnds_ = nullptr;
    qCInfo(log, "the terminal does not take line ends and tabs any more");
    for (const QPointer<DataSource> &source : {clipboardSource_, primarySource_})
        if (source)
            source->exchange(oneLine_);
}

} // namespace quillmender::wayland
