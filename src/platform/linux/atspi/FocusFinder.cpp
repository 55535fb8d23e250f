#include "platform/linux/atspi/FocusFinder.h"

#include "platform/linux/atspi/FrameSearch.h"

#include <QCoreApplication>

namespace quillmender::atspi {

namespace {

/// Roles of objects that claim the focus on behalf of what they contain.
bool isContainer(uint role) {
    switch (role) {
    case roles::filler:
    case roles::frame:
    case roles::panel:
    case roles::scrollPane:
    case roles::unknown:
    case roles::viewport:
    case roles::window:
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<ObjectRef> FocusFinder::likely(qint64 process) const {
    for (const QString &service : memory_.services()) {
        if (process != 0 && applications_.knownProcess(service) == process)
            return memory_.latest(service).constFirst();
    }
    return std::nullopt;
}

QCoro::Task<std::optional<ElementTraits>> FocusFinder::find(qint64 process, CallBudgetRef budget) {
    if (process == QCoreApplication::applicationPid())
        co_return std::nullopt;
    if (process == 0)
        co_return co_await findInActiveFrame(budget);

    const QStringList heardOf = co_await servicesOf(process, memory_.services(), budget);
    std::optional<ElementTraits> lastHeld;
    for (const QString &service : heardOf) {
        const Recollection recollection = co_await recollect(service, budget);
        if (recollection.focused)
            co_return recollection.focused;
        if (recollection.focusIsElsewhere)
            co_return std::nullopt;
        if (!lastHeld)
            lastHeld = recollection.lastHeld;
    }

    const QStringList listed = co_await applications_.services(budget);
    const QStringList services = co_await servicesOf(process, listed, budget);
    for (const QString &service : services) {
        const auto found = co_await search(service, lastHeld, budget);
        if (found) {
            memory_.remember(found->object);
            co_return found;
        }
    }
    co_return std::nullopt;
}

QCoro::Task<bool> FocusFinder::seesFocusBeside(ObjectRef object, CallBudgetRef budget) {
    const Recollection recollection = co_await recollect(object.service, budget);
    if (recollection.focused)
        co_return recollection.focused->object != object;
    co_return recollection.focusIsElsewhere;
}

QCoro::Task<QString> FocusFinder::serviceInFront(qint64 process, CallBudgetRef budget) {
    if (process == QCoreApplication::applicationPid() || !bus_.isConnected())
        co_return QString();
    if (process == 0)
        co_return co_await serviceWithActiveFrame(budget);
    const QStringList heardOf = co_await servicesOf(process, memory_.services(), budget);
    if (!heardOf.isEmpty())
        co_return heardOf.constFirst();
    const QStringList listed = co_await applications_.services(budget);
    const QStringList services = co_await servicesOf(process, listed, budget);
    co_return services.value(0);
}

QCoro::Task<std::optional<ElementTraits>> FocusFinder::findInActiveFrame(CallBudgetRef budget) {
    const QString service = co_await serviceWithActiveFrame(budget);
    if (service.isEmpty())
        co_return std::nullopt;
    const Recollection recollection = co_await recollect(service, budget);
    if (recollection.focused || recollection.focusIsElsewhere)
        co_return recollection.focused;
    const auto found = co_await search(service, std::nullopt, budget);
    if (found)
        memory_.remember(found->object);
    co_return found;
}

QCoro::Task<QString> FocusFinder::serviceWithActiveFrame(CallBudgetRef budget) {
    const std::shared_ptr<BusApplications> applications(std::shared_ptr<void>(), &applications_);
    const QList<OwnedFrame> frames = co_await findActiveFrames(bus_, applications, budget);
    QStringList active;
    for (const OwnedFrame &frame : frames) {
        if (!active.contains(frame.object.service))
            active.append(frame.object.service);
    }
    // Two that both say so: one of them has not heard yet, and nobody knows which.
    co_return active.size() == 1 ? active.constFirst() : QString();
}

QCoro::Task<QStringList> FocusFinder::servicesOf(qint64 process, QStringList candidates,
                                                 CallBudgetRef budget) {
    const QList<qint64> owners = co_await applications_.processesOf(candidates, budget);
    QStringList services;
    for (qsizetype i = 0; i < candidates.size(); ++i) {
        if (owners[i] == process && !services.contains(candidates[i]))
            services.append(candidates[i]);
    }
    co_return services;
}

QCoro::Task<FocusFinder::Recollection> FocusFinder::recollect(QString service,
                                                              CallBudgetRef budget) {
    Recollection recollection;
    const QList<ElementTraits> remembered = co_await examine(bus_, memory_.latest(service), budget);
    bool textMayHaveBeenLast = true;
    for (const ElementTraits &traits : remembered) {
        if (traits.isFocused() && traits.hasText()) {
            recollection.focused = traits;
            co_return recollection;
        }
        if (traits.isFocused() && !isContainer(traits.role))
            recollection.focusIsElsewhere = true;
        if (textMayHaveBeenLast && traits.hasText() && !recollection.lastHeld)
            recollection.lastHeld = traits;
        if (!isContainer(traits.role))
            textMayHaveBeenLast = false;
    }
    co_return recollection;
}

QCoro::Task<std::optional<ElementTraits>>
FocusFinder::search(QString service, std::optional<ElementTraits> lastHeld, CallBudgetRef budget) {
    const ObjectRef root{service, QLatin1String(protocol::rootPath)};
    // All in one flight: most can tell at once what has the focus.
    auto children = childrenOf(bus_, root, budget);
    auto asked = applications_.toolkitOf(service, budget);
    std::optional<ElementTraits> focused;
    if (!lastHeld)
        focused = co_await match(service, budget);
    const QList<ObjectRef> frames = co_await children;
    const Toolkit toolkit = co_await asked;
    if (focused)
        co_return focused;

    const QList<ElementTraits> examined = co_await examine(bus_, frames, budget);
    QList<ObjectRef> active;
    for (const ElementTraits &frame : examined) {
        if (frame.states.has(State::active))
            active.append(frame.object);
    }
    if (active.isEmpty() && lastHeld && lastHeld->object.service == service)
        co_return lastHeld;

    for (const ObjectRef &frame : active)
        co_await applications_.wake(frame, budget);
    // One that had to be woken could not tell before.
    if (lastHeld || toolkit == Toolkit::chromium)
        focused = co_await match(service, budget);
    if (!focused)
        focused = co_await findFocusedBelow(bus_, active.isEmpty() ? frames : active, budget);
    co_return focused;
}

QCoro::Task<std::optional<ElementTraits>> FocusFinder::match(QString service,
                                                             CallBudgetRef budget) {
    const QList<ObjectRef> matches = co_await matchFocused(bus_, service, budget);
    const QList<ElementTraits> matched = co_await examine(bus_, matches, budget);
    for (const ElementTraits &traits : matched) {
        if (traits.isFocused() && traits.hasText())
            co_return traits;
    }
    co_return std::nullopt;
}

} // namespace quillmender::atspi
