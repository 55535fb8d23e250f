#include "applications/ProductSession.h"

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/Waiter.h"
#include "model/AppFailure.h"
#include "support/ProviderAnswers.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <X11/keysym.h>

namespace quillmender::applications {

using namespace std::chrono_literals;
using harness::Accessible;
using harness::AccessibleState;
using harness::waitUntil;

namespace {

// Megabytes go through several programs, one piece after another.
constexpr auto answerDeadline = 90s;

harness::ProductProcess::Setup talkative(const QString &endpoint) {
    harness::ProductProcess::Setup setup = harness::ProductProcess::openAi(endpoint);
    // Which way a text came and went is told nowhere else.
    setup.environment[QStringLiteral("QT_LOGGING_RULES")] = QStringLiteral("quillmender.*=true");
    return setup;
}

QString promptOf(const QByteArray &body) {
    const QJsonObject request = QJsonDocument::fromJson(body).object();
    return request[QStringLiteral("input")][1][QStringLiteral("content")][0][QStringLiteral("text")]
        .toString();
}

} // namespace

ProductSession::ProductSession(harness::AnyDesktop &desktop)
    : desktop_(desktop),
      program_(desktop, talkative(provider_.baseUrl() + QStringLiteral("/v1/responses"))),
      panel_(desktop, program_.pid()) {
    program_.waitUntilReady();
}

Outcome ProductSession::run(const QString &answer) {
    Outcome outcome;
    provider_.setAnswer(test::ScriptedAnswer::http(200, test::openAIBody(answer)));
    const size_t requestsBefore = provider_.requests().size();
    const qsizetype logBefore = log().size();
    const auto said = [&] { return log().mid(logBefore); };

    harness::UserInput &input = desktop_.input();
    for (const auto modifier : {XK_Control_L, XK_Alt_L})
        input.press(modifier);
    QElapsedTimer sinceHotKey;
    sinceHotKey.start();
    input.chord({XK_space});
    for (const auto modifier : {XK_Alt_L, XK_Control_L})
        input.release(modifier);
    waitUntil([&] { return panel_.isActive(); }, QStringLiteral("the panel is shown and active"));
    outcome.hotKeyToPanelMs = static_cast<int>(sinceHotKey.elapsed());

    if (!said().contains("captured ") || said().contains("nothing could be captured")) {
        waitUntil([&] { return !(outcome.message = failureShown()).isEmpty(); },
                  QStringLiteral("the panel says what is wrong"));
        dismiss();
        return outcome;
    }
    outcome.scope = said().contains("of the selection") ? QStringLiteral("selection")
                                                        : QStringLiteral("whole field");
    outcome.capturedBy =
        said().contains("by copying") ? QStringLiteral("copying") : QStringLiteral("accessibility");

    press(QStringLiteral("Fix My Grammar"));
    waitUntil(
        [&] {
            return said().contains("the text was not replaced") ||
                   (said().contains("session: written by ") && !panel_.isShown());
        },
        QStringLiteral("the session ends"), answerDeadline);
    const auto end = std::chrono::steady_clock::now();
    const auto requests = provider_.requests();
    if (requests.size() > requestsBefore) {
        outcome.prompt = promptOf(requests.back().body);
        outcome.answerToTextMs = static_cast<int>(
            std::chrono::duration_cast<std::chrono::milliseconds>(end - requests.back().arrivedAt)
                .count());
    }
    if (said().contains("the text was not replaced")) {
        waitUntil([&] { return !(outcome.message = failureShown()).isEmpty(); },
                  QStringLiteral("the panel says what is wrong"));
        dismiss();
        return outcome;
    }
    outcome.writtenBy =
        said().contains("by pasting") ? QStringLiteral("pasting") : QStringLiteral("accessibility");
    return outcome;
}

void ProductSession::press(const QString &button) {
    std::optional<Accessible> found;
    waitUntil(
        [&] {
            found = desktop_.accessible().find(program_.pid(), [&](const Accessible &widget) {
                return widget.name() == button &&
                       widget.roleName() == QStringLiteral("push button") &&
                       widget.hasState(AccessibleState::showing) &&
                       widget.hasState(AccessibleState::enabled);
            });
            return found.has_value();
        },
        QStringLiteral("the button \"%1\" can be pressed").arg(button));
    desktop_.input().click(panel_.middleOf(*found));
}

QString ProductSession::failureShown() const {
    QString shown;
    for (const AppFailure &failure :
         {AppFailure::noSelectionFound(), AppFailure::replacementFailed(),
          AppFailure::missingFrontmostApplication(),
          AppFailure::accessibilityPermissionRequired()}) {
        const auto label =
            desktop_.accessible().find(program_.pid(), [&](const Accessible &widget) {
                return widget.name() == failure.errorDescription() &&
                       widget.hasState(AccessibleState::showing);
            });
        if (label)
            shown = failure.errorDescription();
    }
    return shown;
}

void ProductSession::dismiss() {
    press(QStringLiteral("Close"));
    waitUntil([&] { return !panel_.isShown(); }, QStringLiteral("the panel is gone"));
}

} // namespace quillmender::applications
