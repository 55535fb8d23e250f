#include "platform/linux/x11/selection/SelectionReader.h"

#include "platform/SignalWait.h"
#include "platform/linux/LaterPointer.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/Xcb.h"
#include "platform/linux/x11/selection/SelectionText.h"

#include <QPointer>
#include <QSet>
#include <xcb/xfixes.h>

namespace quillmender::x11 {

namespace {

/// What asks the owner to do something, or describes the selection rather than being its data.
constexpr std::array sideEffectTargets{"TIMESTAMP",      "MULTIPLE", "TARGETS",
                                       "SAVE_TARGETS",   "DELETE",   "INSERT_SELECTION",
                                       "INSERT_PROPERTY"};
constexpr int mostTargets = 1000;

/// Owner changes are reported while it lives; they are what ends a read whose owner has died.
class OwnerWatch {
  public:
    OwnerWatch(X11Connection &connection, xcb_atom_t selection)
        : connection_(&connection),
          selection_(selection) {
        select(XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
               XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
               XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    OwnerWatch(const OwnerWatch &) = delete;
    OwnerWatch &operator=(const OwnerWatch &) = delete;
    ~OwnerWatch() {
        if (connection_)
            select(0);
    }

  private:
    // On the root: the pasteboard's standing subscription, with events that may still be in the
    // queue, is on another window.
    void select(quint32 events) {
        xcb_xfixes_select_selection_input(connection_->xcb(), connection_->root(), selection_,
                                          events);
    }

    QPointer<X11Connection> connection_;
    xcb_atom_t selection_;
};

} // namespace

bool SelectionReader::hasOwner() const {
    const auto reply = replyTo(connection_.xcb(), xcb_get_selection_owner_reply,
                               xcb_get_selection_owner(connection_.xcb(), selection_));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

QCoro::Task<SelectionReader::Reading> SelectionReader::readAll(TransferBudget whole) {
    constexpr int attempts = 3;
    for (int i = 0; i < attempts; ++i) {
        std::optional<Reading> reading = co_await readOnce(whole.again());
        if (reading)
            co_return std::move(*reading);
    }
    qCWarning(x11Log, "a selection changed hands during each of %d reads", attempts);
    co_return Reading{{}, whole.untilLimit() <= std::chrono::milliseconds(0)};
}

QCoro::Task<std::optional<SelectionReader::Reading>>
SelectionReader::readOnce(TransferBudget budget) {
    const OwnerWatch watch(connection_, selection_);
    const xcb_timestamp_t time = connection_.serverTime();
    if (!hasOwner())
        co_return Reading{};
    const Targets targets = co_await readTargets(time, budget);
    if (targets.isOwnerReplaced)
        co_return std::nullopt;
    if (targets.isCutShort)
        co_return Reading{{}, true};
    const LaterPointer<ParallelConversions> group(
        new ParallelConversions(connection_, selection_, targets.budget, bounds_));
    group->request(targets.list, time);
    co_await SignalWait(group.get(), &ParallelConversions::settled);
    if (group->isOwnerReplaced())
        co_return std::nullopt;
    SelectionContents contents;
    for (const auto &conversion : group->conversions()) {
        if (conversion->isDone())
            contents.append({conversion->target(), conversion->result()});
    }
    if (contents.size() < targets.list.size())
        qCInfo(x11Log, "%lld of %lld targets were not answered",
               qlonglong{targets.list.size() - contents.size()}, qlonglong{targets.list.size()});
    co_return Reading{contents, group->isCutShort()};
}

QCoro::Task<SelectionReader::Targets> SelectionReader::readTargets(xcb_timestamp_t time,
                                                                   TransferBudget budget) {
    const LaterPointer<ParallelConversions> group(
        new ParallelConversions(connection_, selection_, budget, bounds_));
    group->request({connection_.atom("TARGETS")}, time);
    co_await SignalWait(group.get(), &ParallelConversions::settled);
    Targets targets{{}, group->isOwnerReplaced(), group->isCutShort(), group->budget()};
    const SelectionConversion &conversion = *group->conversions().front();
    if (conversion.isDone())
        targets.list = dataTargets(conversion.result().cardinals());
    else if (!conversion.isAnswered())
        qCInfo(x11Log, "a selection's owner did not say what it offers");
    else // an owner too simple to list what it has
        targets.list = {connection_.atom("UTF8_STRING"), XCB_ATOM_STRING};
    co_return targets;
}

QCoro::Task<QList<QByteArray>> SelectionReader::offered() {
    const OwnerWatch watch(connection_, selection_);
    const Targets targets = co_await readTargets(connection_.serverTime(), TransferBudget());
    co_return connection_.atomNames(targets.list);
}

QList<xcb_atom_t> SelectionReader::dataTargets(const QList<quint32> &offered) {
    QSet<xcb_atom_t> seen;
    for (const char *name : sideEffectTargets)
        seen.insert(connection_.atom(name));
    QList<xcb_atom_t> targets;
    const QList<xcb_atom_t> limited = offered.mid(0, mostTargets);
    const QList<QByteArray> names = connection_.atomNames(limited);
    for (qsizetype i = 0; i < limited.size(); ++i) {
        if (names[i].isEmpty() || seen.contains(limited[i]))
            continue;
        seen.insert(limited[i]);
        targets.append(limited[i]);
    }
    return targets;
}

QCoro::Task<std::optional<QString>> SelectionReader::readText(std::chrono::milliseconds limit) {
    // To decode more would hold up the loop.
    constexpr qsizetype mostText = qsizetype{64} * 1024 * 1024;
    const OwnerWatch watch(connection_, selection_);
    const xcb_timestamp_t time = connection_.serverTime();
    if (!hasOwner())
        co_return std::nullopt;
    TransferBudget budget(limit);
    for (const xcb_atom_t target : textTargets(connection_)) {
        const LaterPointer<ParallelConversions> group(
            new ParallelConversions(connection_, selection_, budget, {mostText, mostText}));
        group->request({target}, time);
        co_await SignalWait(group.get(), &ParallelConversions::settled);
        budget = group->budget();
        const SelectionConversion &conversion = *group->conversions().front();
        if (conversion.isDone()) {
            std::optional<QString> text = decodeText(connection_, conversion.result());
            if (text)
                co_return text;
        }
        if (!conversion.isAnswered())
            break;
    }
    co_return std::nullopt;
}

} // namespace quillmender::x11
