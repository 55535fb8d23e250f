#include "platform/linux/atspi/FrameSearch.h"

#include "platform/linux/atspi/Decoding.h"
#include "platform/linux/atspi/TreeWalk.h"

#include <QCoreApplication>
#include <QPointer>

#include <vector>

namespace quillmender::atspi {

namespace {

constexpr int mostFrames = 500;
using Frames = QList<OwnedFrame>;

} // namespace

QCoro::Task<QList<OwnedFrame>> findActiveFrames(AtspiBus &bus,
                                                std::shared_ptr<BusApplications> applications,
                                                CallBudgetRef budget) {
    const QPointer<AtspiBus> there(&bus);
    const QStringList services = co_await applications->services(budget);
    if (!there)
        co_return Frames();
    const QList<qint64> owners = co_await applications->processesOf(services, budget);
    if (!there)
        co_return Frames();
    std::vector<PendingCall> questions;
    for (qsizetype i = 0; i < services.size(); ++i) {
        if (owners[i] == 0 || owners[i] == QCoreApplication::applicationPid())
            continue;
        const ObjectRef root{services[i], QLatin1String(protocol::rootPath)};
        questions.push_back(there->call(budget, root, protocol::accessible, "GetChildren"));
    }
    QList<ObjectRef> children;
    for (const PendingCall &question : questions) {
        const auto answer = co_await question.answer();
        children += decodeObjects(firstValue(answer), mostFrames);
    }
    if (!there)
        co_return Frames();
    const QList<ElementTraits> examined = co_await examine(*there, children, budget);
    Frames active;
    for (const ElementTraits &frame : examined) {
        const qint64 owner = owners.value(services.indexOf(frame.object.service));
        if (frame.states.has(State::active) && owner != 0)
            active.append({frame.object, owner});
    }
    co_return active;
}

} // namespace quillmender::atspi
