#include "platform/linux/atspi/FrameProcesses.h"

#include "platform/linux/atspi/Decoding.h"
#include "platform/linux/atspi/TreeWalk.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <vector>

namespace quillmender::atspi {

namespace {

constexpr int mostFrames = 500;

QString programOfProcess(qint64 process) {
    const QString path = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(process));
    return QFileInfo(path).fileName();
}

/// Letters and digits alone, in lower case.
QString plain(const QString &name) {
    QString letters;
    for (const QChar sign : name.toLower()) {
        if (sign.isLetterOrNumber())
            letters += sign;
    }
    return letters;
}

} // namespace

bool canBeApplication(const QString &appId, const QString &name, const QString &program) {
    const QString whole = plain(appId);
    const QString last = plain(appId.section(u'.', -1));
    for (const QString &other : {plain(name), plain(program)}) {
        if (!other.isEmpty() && (other == whole || other == last))
            return true;
    }
    return false;
}

QCoro::Task<qint64> FrameProcesses::processOfActive(QString title, QString appId) {
    if (!bus_.isConnected())
        co_return 0;
    const QPointer self(this);
    const auto budget = std::make_shared<CallBudget>();
    const CallBudget::Use use(budget);
    const QStringList services = co_await applications_.services(budget);
    if (!self)
        co_return 0;
    const QList<qint64> owners = co_await applications_.processesOf(services, budget);
    if (!self)
        co_return 0;

    // All at once: one that hangs would leave no time for those behind it.
    std::vector<PendingCall> questions;
    for (const QString &service : services) {
        const ObjectRef root{service, QLatin1String(protocol::rootPath)};
        questions.push_back(bus_.call(budget, root, protocol::accessible, "GetChildren"));
    }
    QList<ObjectRef> children;
    for (const PendingCall &question : questions) {
        const auto answer = co_await question.answer();
        children += decodeObjects(firstValue(answer), mostFrames);
    }
    if (!self)
        co_return 0;
    const QList<ElementTraits> frames = co_await examine(bus_, children, budget);
    if (!self)
        co_return 0;

    std::vector<PendingCall> titles;
    std::vector<PendingCall> names;
    QList<qint64> processes;
    for (const ElementTraits &frame : frames) {
        const qint64 owner = owners.value(services.indexOf(frame.object.service));
        if (!frame.states.has(State::active) || owner == 0 ||
            owner == QCoreApplication::applicationPid())
            continue;
        const ObjectRef root{frame.object.service, QLatin1String(protocol::rootPath)};
        titles.push_back(bus_.property(budget, frame.object, protocol::accessible, "Name"));
        names.push_back(bus_.property(budget, root, protocol::accessible, "Name"));
        processes.append(owner);
    }
    qint64 found = 0;
    for (qsizetype i = 0; i < processes.size(); ++i) {
        const auto frameTitle = co_await titles[size_t(i)].answer();
        const auto name = co_await names[size_t(i)].answer();
        const bool isIt =
            (!title.isEmpty() && firstValue(frameTitle).toString() == title) ||
            canBeApplication(appId, firstValue(name).toString(), programOfProcess(processes[i]));
        if (isIt && found != 0 && found != processes[i])
            co_return 0;
        if (isIt)
            found = processes[i];
    }
    co_return found;
}

} // namespace quillmender::atspi
