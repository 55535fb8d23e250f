#include "desktop/soak/SoakRun.h"

#include "desktop/harness/ClipboardOwner.h"
#include "desktop/sessions/SessionSteps.h"
#include "desktop/soak/ResourceUse.h"
#include "support/ProviderAnswers.h"

#include <gtest/gtest.h>

#include <iostream>

namespace quillmender {

using harness::ClipboardOwner;
using harness::waitUntil;
using test::ScriptedAnswer;

namespace {

const QString failureMessage = QStringLiteral("The provider is out of order.");
const QStringList actions{QStringLiteral("Formalize"), QStringLiteral("Simplify"),
                          QStringLiteral("Fix My Grammar")};

} // namespace

int fromEnvironment(const char *name, int usual) {
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber && value > 0 ? value : usual;
}

SoakRun::SoakRun(SessionSteps &session)
    : session_(session),
      seed_(static_cast<unsigned>(fromEnvironment(
          "QUILLMENDER_SOAK_SEED", static_cast<int>(std::random_device{}() & 0x7fffffff)))),
      random_(seed_) {
    std::cout << "seed " << seed_ << "\n";
    testing::Test::RecordProperty("seed", static_cast<int>(seed_));
}

void SoakRun::takeClipboard() {
    harness::AnyDesktop &desktop = session_.sessionDesktop();
    switch (draw(4)) {
    case 0:
        owner_ = desktop.ownClipboard(ClipboardOwner::textHtmlAndImage());
        break;
    case 1:
        owner_ = desktop.ownClipboard(ClipboardOwner::plainText(QString(draw(5000), u'x')));
        break;
    case 2:
        owner_ =
            desktop.ownClipboard(ClipboardOwner::plainText(QString(600'000 + draw(1000), u'y')));
        break;
    default:
        break; // whoever has it keeps it
    }
}

/// Hot key, action, and either the answer in the text or the message in the panel.
void SoakRun::playOne() {
    SoakPartner &partner =
        *partners_[static_cast<size_t>(draw(static_cast<int>(partners_.size())))];
    partner.prepare(draw(2) == 0);
    takeClipboard();
    harness::AnyDesktop &desktop = session_.sessionDesktop();
    const harness::ClipboardContents before = desktop.readClipboard();

    const bool isFailure = draw(4) == 0;
    const QString answer = QStringLiteral("Answer %1 \u00e9").arg(++sessions_);
    if (isFailure)
        session_.provider().setAnswer(ScriptedAnswer::http(500, test::errorBody(failureMessage)));
    else
        session_.answerWith(answer);
    session_.pressHotKey();
    const harness::WindowId panel = session_.waitForPanel(partner.captured());
    session_.click(actions[draw(static_cast<int>(actions.size()))]);
    if (isFailure) {
        session_.waitForPanel(failureMessage);
        if (panel == 0)
            session_.click(QStringLiteral("Close"));
        else
            desktop.windows().close(panel);
    }
    session_.waitUntilPanelIsGone();
    if (isFailure) {
        partner.expectNothing();
    } else {
        // It may have gone for the paste.
        session_.waitUntilWritten(++written_);
        partner.expectAnswer(answer);
    }
    EXPECT_EQ(desktop.readClipboard(), before);
}

void SoakRun::play(const std::function<qint64()> &more) {
    const int sessions = fromEnvironment("QUILLMENDER_SOAK_SESSIONS", 100);
    const int warmUp = std::min(100, sessions / 2);
    const auto use = [this] {
        return ResourceUse::ofProcess(session_.program().pid(),
                                      session_.sessionDesktop().sessionBus().connection());
    };
    const auto playUntil = [this](int count) {
        while (sessions_ < count && !testing::Test::HasFailure())
            playOne();
    };
    playUntil(warmUp);
    const ResourceUse early = use();
    const qint64 earlyMore = more();
    playUntil(sessions);
    const ResourceUse late = use();
    const qint64 lateMore = more();
    std::cout << "after " << warmUp << " sessions: " << early << ", " << earlyMore
              << " in the window system\nafter " << sessions_ << " sessions: " << late << ", "
              << lateMore << " in the window system\n";

    // A leak of one thing in a session would show as many as there were sessions.
    const int leak = std::max(4, (sessions - warmUp) / 4);
    // A sanitizer's heap is another; leaks of the smallest kind are what it tells of itself.
    const int leakKiB = fromEnvironment("QUILLMENDER_SOAK_LEAK_KIB", 3072);
    EXPECT_LT(late.memoryKiB - early.memoryKiB, leakKiB);
    EXPECT_LT(late.descriptors - early.descriptors, leak);
    EXPECT_LT(late.threads - early.threads, leak);
    EXPECT_LT(lateMore - earlyMore, leak);
    EXPECT_EQ(late.matchRules.has_value(), early.matchRules.has_value());
    EXPECT_LT(late.matchRules.value_or(0) - early.matchRules.value_or(0), leak);

    session_.program().activateAction(QStringLiteral("quit"));
    waitUntil([this] { return !session_.program().process().isRunning(); },
              QStringLiteral("it has ended"));
    EXPECT_EQ(session_.program().process().exitCode(), 0);
}

} // namespace quillmender
