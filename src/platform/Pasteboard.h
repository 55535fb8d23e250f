#pragma once

#include "platform/LentText.h"
#include "platform/PasteboardItem.h"
#include "platform/Workspace.h"

#include <QCoroTask>
#include <QString>

#include <chrono>
#include <optional>

namespace quillmender {

/// The general pasteboard (on X11 the CLIPBOARD selection), shared with every other application.
class Pasteboard {
  public:
    Pasteboard() = default;
    Pasteboard(const Pasteboard &) = delete;
    Pasteboard &operator=(const Pasteboard &) = delete;
    virtual ~Pasteboard() = default;

    /// The current items in their order, each with every representation that its owner handed over
    /// before a deadline; what it did not hand over is left out. Empty when nothing is there.
    virtual QCoro::Task<QList<PasteboardItem>> items() = 0;

    /// The same when all of it can be had soon, within `limit` at most. Absent when an owner was
    /// still handing something over then, or fell silent: `items` may have it, with more time.
    virtual QCoro::Task<std::optional<QList<PasteboardItem>>>
    itemsWithin(std::chrono::milliseconds limit) {
        Q_UNUSED(limit)
        QList<PasteboardItem> all = co_await items();
        co_return std::make_optional(std::move(all));
    }

    /// Differs from an earlier answer when the contents were replaced in between, by whomever.
    virtual qint64 changeCount() = 0;

    /// Puts the items on the pasteboard, in their order, in place of whatever is there; without
    /// items it is empty afterwards. Nobody sees an emptiness in between where the system has a
    /// way.
    virtual void replaceContents(const QList<PasteboardItem> &items) = 0;

    /// The plain text, if there is any; on Linux none when it is a line that an editor has copied
    /// because nothing was selected.
    virtual QCoro::Task<std::optional<QString>> string() = 0;

    /// Puts plain text there in place of whatever is there, for a paste into this application; on
    /// Linux marked as not worth keeping for programs that record its history. Null when it was
    /// refused: then there is nothing to be pasted.
    virtual LentTextRef lend(const QString &text, RunningApplicationRef reader) = 0;

    /// Called once, when the program ends: completes when what it put here will outlive it, or
    /// after a deadline. At once where the system itself keeps the contents.
    virtual QCoro::Task<> handOver() = 0;
};

} // namespace quillmender
