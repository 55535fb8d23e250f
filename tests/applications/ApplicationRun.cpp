#include "applications/ApplicationRun.h"

#include "applications/ClipboardText.h"
#include "applications/HiddenBus.h"
#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/HarnessError.h"

#include <QProcess>
#include <QRegularExpression>

namespace quillmender::applications {

using harness::ClipboardOwner;

namespace {

QString shortened(const QString &text) {
    constexpr qsizetype most = 80;
    QString shown = text.left(most);
    shown.replace(u'\n', QStringLiteral("\u23ce"));
    return text.size() > most ? shown + QStringLiteral("\u2026 (%1)").arg(text.size()) : shown;
}

} // namespace

QString installedVersion(const QString &packages) {
    for (const QString &package : packages.split(u'|')) {
        QProcess query;
        query.start(QStringLiteral("dpkg-query"),
                    {QStringLiteral("--show"), QStringLiteral("--showformat=${Version}"), package});
        query.waitForFinished();
        // A package that others only speak of is known and has no version.
        const QString version = QString::fromUtf8(query.readAllStandardOutput());
        if (!version.isEmpty())
            return version;
    }
    return {};
}

ApplicationRun::ApplicationRun(const Application &application, Surroundings surroundings,
                               QString artifacts)
    : application_(application),
      artifacts_(std::move(artifacts)),
      desktop_(startDesktop(surroundings, application.needsX)),
      product_(*desktop_) {}

ApplicationRun::~ApplicationRun() {
    harness::setTimeoutObserver({});
}

QList<Observation> ApplicationRun::run(const QString &wanted,
                                       const std::function<void(const Observation &)> &tell) {
    QList<Observation> seen;
    try {
        harness::setTimeoutObserver([this] { keepArtifacts(QStringLiteral("start")); });
        start();
    } catch (const harness::HarnessError &error) {
        seen.append(Observation::notStarted(error.what()));
        tell(seen.last());
        return seen;
    }
    for (const Scenario &scenario : field_->scenarios()) {
        if (!scenario.name.contains(wanted))
            continue;
        seen.append(observe(scenario));
        tell(seen.last());
    }
    return seen;
}

void ApplicationRun::start() {
    harness::Command command = application_.command(*desktop_);
    std::optional<HiddenBus> hiding;
    if (application_.isOffTheBus)
        hiding.emplace(*desktop_, command);
    running_.emplace(*desktop_, command, application_.title);
    hiding.reset();
    if (application_.prepare)
        application_.prepare(*desktop_, *running_);
    field_ = Field::make(application_, *desktop_, *running_);
}

bool ApplicationRun::isOnTheBus() {
    const qint64 process = desktop_->windows().processId(running_->window());
    return desktop_->accessible().application(process).has_value();
}

Observation ApplicationRun::observe(const Scenario &scenario) {
    Observation seen;
    seen.scenario = scenario.name;
    harness::setTimeoutObserver([&] { keepArtifacts(scenario.name); });
    const qsizetype logBefore = product_.log().size();
    bool isUnderWay = false;
    try {
        running_->activate();
        field_->prepare(scenario);
        // By now: Qt looks for the bus after its window is there.
        if (application_.isOffTheBus && isOnTheBus())
            throw harness::HarnessError(QStringLiteral("it has found the accessibility bus"));
        const auto clipboard = desktop_->ownClipboard(ClipboardOwner::textHtmlAndImage());
        const auto before = desktop_->readClipboard();
        isUnderWay = true;
        const Outcome outcome = product_.run(scenario.answer);
        const auto after = desktop_->readClipboard();
        seen.clipboardIdentical = after == before && after.targets.size() == before.targets.size();
        running_->activate();
        judge(scenario, outcome, seen);
    } catch (const harness::HarnessError &error) {
        seen.remark = QString::fromUtf8(error.what());
        seen.verdict = isUnderWay ? Observation::Verdict::wrong : Observation::Verdict::notTried;
    }
    // The program itself must have nothing to complain of.
    const QByteArray log = product_.log().mid(logBefore);
    if (log.contains("warning") || log.contains("critical"))
        seen.remark += QStringLiteral(" The program warned.");
    if (seen.verdict != Observation::Verdict::replaced)
        keepArtifacts(scenario.name);
    return seen;
}

QString ApplicationRun::capturedBy(const Outcome &outcome) const {
    // Over the bus or as PRIMARY: the program does not tell the two apart.
    const bool isTerminals = application_.kind == Application::Kind::prompt &&
                             outcome.capturedBy != QStringLiteral("copying");
    return isTerminals ? QStringLiteral("the terminal") : outcome.capturedBy;
}

void ApplicationRun::judge(const Scenario &scenario, const Outcome &outcome, Observation &seen) {
    if (!outcome.scope.isEmpty())
        seen.capture = QStringLiteral("%1 by %2").arg(outcome.scope, capturedBy(outcome));
    seen.route = outcome.writtenBy;
    seen.message = outcome.message;
    seen.hotKeyToPanelMs = outcome.hotKeyToPanelMs;
    seen.answerToTextMs = outcome.answerToTextMs;

    const bool isReplaced = outcome.message.isEmpty();
    const QString wanted = isReplaced ? field_->expected(scenario) : scenario.text;
    if (isReplaced) {
        if (const auto selected = field_->selected())
            seen.isInsertedSelected =
                withPlainLineEnds(*selected) == withPlainLineEnds(scenario.answer);
        else
            seen.isInsertedSelected = false;
    }
    const auto text = field_->read(wanted);
    if (scenario.hasWindowsLineEnds())
        seen.lineEndsBefore = lineEndsOf(field_->placed());
    if (scenario.hasWindowsLineEnds() || scenario.answer.contains(QStringLiteral("\r\n")))
        seen.lineEndsAfter = lineEndsOf(text.value_or(QString()));
    const bool isRight = text && normalised(*text) == normalised(wanted);
    if (application_.kind == Application::Kind::password && !outcome.scope.isEmpty()) {
        seen.remark = QStringLiteral("a password field was captured");
    } else if (!isRight) {
        seen.remark = QStringLiteral("wanted \"%1\", found \"%2\"")
                          .arg(shortened(wanted), shortened(text.value_or(QStringLiteral("?"))));
    } else if (!outcome.prompt.isEmpty() && !outcome.prompt.endsWith(scenario.picked)) {
        seen.remark = QStringLiteral("sent \"%1\"").arg(shortened(outcome.prompt.right(80)));
    } else if (seen.lineEndsBefore != seen.lineEndsAfter && !seen.lineEndsBefore.isEmpty()) {
        seen.remark = QStringLiteral("the line ends were %1 and are %2")
                          .arg(seen.lineEndsBefore, seen.lineEndsAfter);
    } else if (!seen.clipboardIdentical.value_or(false)) {
        seen.remark = QStringLiteral("the clipboard is not what it was");
    } else {
        seen.verdict = isReplaced ? Observation::Verdict::replaced : Observation::Verdict::refused;
        if (isReplaced && !scenario.isLarge())
            seen.undoSteps = field_->undo(scenario.text);
        return;
    }
    seen.verdict = Observation::Verdict::wrong;
}

void ApplicationRun::keepArtifacts(const QString &scenario) {
    QString name = scenario;
    name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]+")), QStringLiteral("-"));
    desktop_->keepArtifacts(
        QStringLiteral("%1/%2/%3").arg(artifacts_, application_.id, name.toLower()));
}

} // namespace quillmender::applications
