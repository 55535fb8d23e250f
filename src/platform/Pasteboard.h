#pragma once

#include "platform/PasteboardItem.h"

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

    /// Empties the pasteboard and advances the change count. A write in the same turn of the event
    /// loop may make one change of the two, so that nobody sees the emptiness.
    virtual void clearContents() = 0;

    /// Puts the items on a cleared pasteboard, in their order. False when it was refused.
    virtual bool writeItems(const QList<PasteboardItem> &items) = 0;

    /// The plain text, if there is any; on Linux none when it is a line that an editor has copied
    /// because nothing was selected.
    virtual QCoro::Task<std::optional<QString>> string() = 0;

    /// Puts plain text on a cleared pasteboard; on Linux marked as not worth keeping for programs
    /// that record its history. False when it was refused.
    virtual bool setString(const QString &text) = 0;

    /// Completes when the application that was pasted into has read what `setString` put here, or
    /// after `limit`, whichever is first. Completes at once, with true, where the system cannot
    /// tell. False when the application has not asked for it: it has no use for a paste, as a
    /// document that is only shown; or it does not attend to its events and has not even seen the
    /// chord, in which case whatever it asks for when it does see it is refused.
    virtual QCoro::Task<bool> stringWasRead(std::chrono::milliseconds limit) = 0;

    /// Called once, when the program ends: completes when what it put here will outlive it, or
    /// after a deadline. At once where the system itself keeps the contents.
    virtual QCoro::Task<> handOver() = 0;
};

} // namespace quillmender
