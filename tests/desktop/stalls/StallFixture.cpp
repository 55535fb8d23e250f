#include "desktop/stalls/StallFixture.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/stalls/RealDocument.h"
#include "desktop/stalls/ScriptedDocument.h"
#include "desktop/stalls/StalledAnswer.h"

#include <QScopeGuard>

namespace quillmender {

using harness::ClipboardOwner;
using harness::ClipboardProbe;
using harness::TestApplication;
using harness::waitUntil;

namespace {

const QString letter = QStringLiteral("Hello, you recieve it.");
const QString word = QStringLiteral("recieve");
constexpr int wordStart = 11;
constexpr int wordEnd = 18;

std::chrono::milliseconds durationOf(const SessionPlan &plan, Stall::Partner partner) {
    for (const Stall &stall : plan.stalls) {
        if (stall.partner == partner)
            return stall.duration;
    }
    return std::chrono::milliseconds(0);
}

bool hasStall(const SessionPlan &plan, Stall::Partner partner) {
    return durationOf(plan, partner).count() > 0;
}

} // namespace

StallFixture::~StallFixture() = default;

void StallFixture::start() {
    startDesktop();
    allowLog();
    harness::ProductProcess::Setup setup =
        harness::ProductProcess::openAi(provider().baseUrl() + QStringLiteral("/v1/responses"));
    setup.apiKeys[QStringLiteral("openAI")] = "sk-of-the-stalls";
    startLoggingProgram(setup);
    windows_.emplace(desktop().display(), [this](WindowWatch::Event event) {
        if (event == WindowWatch::Event::clipboardTaken)
            stopper_.happened(QStringLiteral("clipboardTaken"));
        else if (isRequested_)
            stopper_.happened(QStringLiteral("activated"));
    });
    calls_.emplace(desktop().accessibilityBus()->address(),
                   [this](const QString &destination, const QString &member) {
                       noteCall(destination, member);
                   });
    for (const auto application : {Application::onBus, Application::offBus, Application::mousepad,
                                   Application::plainEdit, Application::lineEdit})
        openDocument(application);
}

void StallFixture::noteCall(const QString &destination, const QString &member) {
    QString call;
    {
        const std::scoped_lock lock(sourceMutex_);
        if (destination != sourceBusName_)
            return;
        call = QStringLiteral("%1#%2").arg(member).arg(++callCounts_[member]);
        callsSeen_.append(call);
    }
    stopper_.happened(call);
}

void StallFixture::startLoggingProgram(harness::ProductProcess::Setup setup) {
    setup.environment[QStringLiteral("QT_LOGGING_RULES")] = QStringLiteral("quillmender.*=true");
    startProgram(setup);
}

void StallFixture::openDocument(Application application) {
    std::unique_ptr<Document> &document = documents_[application];
    document.reset();
    switch (application) {
    case Application::onBus:
    case Application::offBus:
        document = std::make_unique<ScriptedDocument>(desktop(), application == Application::onBus);
        break;
    case Application::mousepad:
        document = std::make_unique<RealDocument>(
            desktop(), TestApplication::mousepad(desktop(), letter), letter);
        break;
    case Application::plainEdit:
    case Application::lineEdit: {
        const QString kind = application == Application::plainEdit ? QStringLiteral("plain")
                                                                   : QStringLiteral("line");
        document = std::make_unique<RealDocument>(
            desktop(), TestApplication::sampleEditor(desktop(), kind, letter), letter);
        break;
    }
    }
    document->prepare(letter, 0, 0, {});
    texts_[application] = letter;
}

void StallFixture::startAgain() {
    stopper_.disarm();
    waitUntil([this] { return stopper_.isOver(); }, QStringLiteral("nothing is stopped"));
    responsiveness_.reset();
    program().process().kill();
    waitUntil([this] { return !isAlive(); }, QStringLiteral("the program has ended"));
    letGoOfKeys();
    startLoggingProgram({});
    document(last_).prepare(letter, 0, 0, {});
    texts_[last_] = letter;
}

void StallFixture::letGoOfKeys() {
    for (const auto key : {XK_Control_L, XK_Alt_L, XK_Shift_L, XK_space})
        input().release(key);
}

QStringList StallFixture::play(const SessionPlan &plan) {
    const auto answering = qScopeGuard([this] { letAnswer(); });
    last_ = plan.application;
    Document &source = document(plan.application);
    record_ = {};
    record_.textBefore = letter;
    record_.isKeyringStalled = hasStall(plan, Stall::Partner::keyring);
    logBefore_ = program().log().size();
    requestsBefore_ = provider().requests().size();
    const QString answer = QStringLiteral("Answer %1 \u00e9").arg(++sessions_);

    prepare(plan, source);
    answerAs(plan, answer);
    armStops(plan, source);
    PanelReader panel(desktop(), program().pid());
    record_.message = capture(panel);
    if (!record_.message)
        record_.message = run(plan, panel);
    comeToRest(panel, source);
    observe(plan, answer);
    return problemsOf(record_);
}

void StallFixture::prepare(const SessionPlan &plan, Document &source) {
    isRequested_ = false;
    QList<Stall> stalls;
    for (const Stall &stall : plan.stalls) {
        if (stall.partner == Stall::Partner::editor && stall.how != Stall::How::isStopped)
            stalls.append(stall);
    }
    source.prepare(letter, plan.isWordOnly ? wordStart : 0, plan.isWordOnly ? wordEnd : 0, stalls);
    restartProgram(plan);
    takeClipboard(plan);
    record_.clipboardBefore = ClipboardProbe(desktop().display()).read();
    for (const Stall &stall : plan.stalls) {
        if (stall.partner == Stall::Partner::clipboard && owner_)
            owner_->standStillAt(stall.at.toUtf8(), stall.duration);
    }
    responsiveness_.emplace(desktop());
}

void StallFixture::takeClipboard(const SessionPlan &plan) {
    switch (plan.clipboard) {
    case SessionPlan::Clipboard::isKept:
        break;
    case SessionPlan::Clipboard::isText:
        owner_.emplace(desktop().display(),
                       ClipboardOwner::plainText(QStringLiteral("copied %1").arg(sessions_)));
        break;
    case SessionPlan::Clipboard::isRich:
        owner_.emplace(desktop().display(), ClipboardOwner::textHtmlAndImage());
        break;
    case SessionPlan::Clipboard::isLarge:
        owner_.emplace(desktop().display(),
                       ClipboardOwner::plainText(QString(600'000 + sessions_, u'y')));
        break;
    }
}

void StallFixture::answerAs(const SessionPlan &plan, const QString &answer) {
    mayAnswer_ = !plan.focusGoesElsewhere;
    const auto whole = stalledAnswer(answer, plan.stalls);
    provider().setResponder([this, whole](const test::ReceivedRequest &) {
        isRequested_ = true;
        stopper_.happened(QStringLiteral("requested"));
        mayAnswer_.wait(false);
        return whole;
    });
}

void StallFixture::restartProgram(const SessionPlan &plan) {
    const auto stall = durationOf(plan, Stall::Partner::keyring);
    if (!plan.isProgramFresh && stall.count() == 0)
        return;
    program().process().end();
    if (stall.count() > 0) {
        // It asks for the key when it starts, and uses that answer for as long as it runs.
        stopper_.arm({{QStringLiteral("started"), desktop().keyring()->process().pid(), stall}});
        stopper_.happened(QStringLiteral("started"));
    }
    startLoggingProgram({});
}

void StallFixture::armStops(const SessionPlan &plan, Document &source) {
    QList<Stopper::Order> orders;
    for (const Stall &stall : plan.stalls) {
        if (stall.how != Stall::How::isStopped || stall.partner == Stall::Partner::keyring)
            continue;
        const qint64 group = stall.partner == Stall::Partner::windowManager
                                 ? desktop().windowManager()->process().pid()
                                 : source.processGroup();
        orders.append({stall.at, group, stall.duration});
    }
    {
        const std::scoped_lock lock(sourceMutex_);
        sourceBusName_ = source.busName();
        callCounts_.clear();
        callsSeen_.clear();
    }
    stopper_.arm(orders);
}

std::optional<QString> StallFixture::capture(PanelReader &panel) {
    stopper_.happened(QStringLiteral("hotKey"));
    pressHotKey();
    stopper_.happened(QStringLiteral("hotKeyPressed"));
    std::optional<QString> shown;
    waitUntil(
        [&] {
            shown = panel.firstShown(PanelReader::messages() + QStringList{word, letter});
            return shown || !isAlive();
        },
        QStringLiteral("the panel shows what was captured, or why nothing was"));
    stopper_.happened(QStringLiteral("captured"));
    return shown && PanelReader::messages().contains(*shown) ? shown : std::nullopt;
}

std::optional<QString> StallFixture::run(const SessionPlan &plan, PanelReader &panel) {
    if (!isAlive())
        return std::nullopt;
    const size_t before = provider().requests().size();
    click(QStringLiteral("Fix My Grammar"));
    if (plan.focusGoesElsewhere) {
        waitUntil([&] { return provider().requests().size() > before || !isAlive(); },
                  QStringLiteral("the provider is asked"));
        moveFocusAway(plan.application);
    }
    std::optional<QString> shown;
    waitUntil(
        [&] {
            shown = panel.firstShown(PanelReader::messages());
            return shown || panel.isGone() || !isAlive();
        },
        QStringLiteral("the session ends"));
    return shown;
}

void StallFixture::moveFocusAway(Application source) {
    const auto elsewhere =
        source == Application::plainEdit ? Application::lineEdit : Application::plainEdit;
    document(elsewhere).activate();
    letAnswer();
}

void StallFixture::letAnswer() {
    mayAnswer_ = true;
    mayAnswer_.notify_all();
}

void StallFixture::comeToRest(PanelReader &panel, Document &source) {
    stopper_.disarm();
    waitUntil([this] { return stopper_.isOver(); }, QStringLiteral("nothing is stopped"));
    if (!panel.isGone()) {
        desktop().windows().close(desktop().windows().titled(QStringLiteral("Quillmender")));
        waitUntil([&] { return panel.isGone() || !isAlive(); }, QStringLiteral("the panel closes"));
    }
    source.comeToRest();
}

void StallFixture::observe(const SessionPlan &plan, const QString &answer) {
    record_.isAlive = isAlive();
    const auto requests = provider().requests();
    record_.requests = int(requests.size() - requestsBefore_);
    if (record_.requests > 0) {
        const bool isField = promptOf(requests.back()).contains(letter);
        record_.replaced =
            isField ? answer : QString(letter).replace(wordStart, wordEnd - wordStart, answer);
    }
    ClipboardProbe probe(desktop().display());
    harness::becomesTrue(
        [&] {
            // An owner that is just giving it up answers nobody; one that keeps it so is at fault.
            try {
                record_.clipboardAfter = probe.read();
            } catch (const harness::HarnessError &error) {
                record_.clipboardAfter = {};
                record_.clipboardAfter.targets.append(error.what());
                return false;
            }
            return record_.clipboardAfter == record_.clipboardBefore;
        },
        isAlive() ? std::chrono::seconds(10) : std::chrono::seconds(0));
    record_.textAfter = document(plan.application).text();
    for (const auto &[application, document] : documents_) {
        const QString text = document->text();
        if (application != plan.application && text != texts_[application])
            record_.otherTexts.append(text);
        texts_[application] = text;
    }
    record_.longestWaitMs = responsiveness_->longestWait().count();
    record_.longestWaitOfBystanderMs = responsiveness_->longestWaitOfBystander().count();
    responsiveness_.reset();
}

QStringList StallFixture::traces() {
    QStringList lines{QStringLiteral("stopped at: ") +
                      stopper_.carriedOut().join(QStringLiteral(", "))};
    QStringList calls;
    try {
        calls = document(last_).calls();
    } catch (const harness::HarnessError &error) {
        lines.append(QString::fromUtf8(error.what()));
    }
    if (calls.isEmpty()) {
        const std::scoped_lock lock(sourceMutex_);
        lines.append(callsSeen_.join(QStringLiteral(", ")));
    }
    lines += calls;
    for (const QByteArray &line : program().log().mid(logBefore_).split('\n'))
        lines.append(QString::fromUtf8(line));
    return lines;
}

} // namespace quillmender
