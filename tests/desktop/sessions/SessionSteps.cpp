#include "desktop/sessions/SessionSteps.h"

#include "desktop/harness/ClipboardOwner.h"
#include "support/ProviderAnswers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace quillmender {

using harness::Accessible;
using harness::AccessibleState;
using harness::ProductProcess;
using harness::waitUntil;

namespace {

const QByteArray apiKey = "sk-never-to-be-seen-in-a-log";
const QByteArray sessionLine = "quillmender.session: ";

} // namespace

SessionSteps::~SessionSteps() = default;

void SessionSteps::takeClipboard(const QList<harness::ClipboardRepresentation> &offer) {
    clipboard_ = sessionDesktop().ownClipboard(offer);
    clipboardBefore_ = sessionDesktop().readClipboard();
    ownReads_ = 1;
    ASSERT_EQ(clipboardBefore_.representations.size(), offer.size());
    for (qsizetype index = 0; index < offer.size(); ++index) {
        EXPECT_EQ(clipboardBefore_.representations[index].target, offer[index].target);
        EXPECT_EQ(clipboardBefore_.representations[index].bytes, offer[index].bytes);
    }
}

void SessionSteps::startProgram(const QMap<QString, QString> &environment) {
    ProductProcess::Setup setup =
        ProductProcess::openAi(provider_.baseUrl() + QStringLiteral("/v1/responses"));
    setup.apiKeys[QStringLiteral("openAI")] = apiKey;
    setup.environment = environment;
    const auto rules = QStringLiteral("QT_LOGGING_RULES");
    if (!setup.environment.contains(rules))
        setup.environment[rules] = QStringLiteral("quillmender.session.info=true");
    startProgram(setup);
}

void SessionSteps::startProgram(const ProductProcess::Setup &setup) {
    program_.emplace(sessionDesktop(), setup);
    program_->waitUntilReady();
}

void SessionSteps::answerWith(const QString &text) {
    provider_.setAnswer(test::ScriptedAnswer::http(200, test::openAIBody(text)));
}

void SessionSteps::answerLater(const QString &text) {
    const auto answer = test::ScriptedAnswer::http(200, test::openAIBody(text));
    test::ScriptedAnswer held;
    held.hold();
    for (const auto &step : answer.steps())
        held.send(step.bytes);
    provider_.setAnswer(held);
}

void SessionSteps::pressHotKey() {
    sessionDesktop().input().chord({XK_Control_L, XK_Alt_L, XK_space});
}

harness::WindowId SessionSteps::waitForPanel(const QString &text) {
    const harness::WindowId panel = waitForPanel();
    waitUntil([&] { return panelShows(text); }, QStringLiteral("the panel shows \"%1\"").arg(text));
    return panel;
}

bool SessionSteps::panelShows(const QString &text) {
    return sessionDesktop()
        .accessible()
        .find(programId(),
              [&](const Accessible &widget) {
                  return widget.name() == text && widget.hasState(AccessibleState::showing);
              })
        .has_value();
}

Accessible SessionSteps::button(const QString &title) {
    std::optional<Accessible> found;
    waitUntil(
        [&] {
            found = sessionDesktop().accessible().find(programId(), [&](const Accessible &widget) {
                return widget.name() == title &&
                       widget.roleName() == QStringLiteral("push button") &&
                       widget.hasState(AccessibleState::showing) &&
                       widget.hasState(AccessibleState::enabled);
            });
            return found.has_value();
        },
        QStringLiteral("the button \"%1\" can be pressed").arg(title));
    return *found;
}

void SessionSteps::click(const QString &title) {
    const Accessible target = button(title);
    sessionDesktop().input().click(middleOf(target));
}

void SessionSteps::tabTo(const QString &title) {
    constexpr int moreThanAllControls = 30;
    const auto hasFocus = [](const Accessible &widget) {
        return widget.hasState(AccessibleState::focused) &&
               widget.roleName() != QStringLiteral("dialog");
    };
    for (int step = 0; step < moreThanAllControls; ++step) {
        const auto before = sessionDesktop().accessible().find(programId(), hasFocus);
        if (before && before->name() == title)
            return;
        sessionDesktop().input().chord({XK_Tab});
        waitUntil(
            [&] {
                const auto now = sessionDesktop().accessible().find(programId(), hasFocus);
                return now && !(before && *now == *before);
            },
            QStringLiteral("Tab moves the focus"));
    }
    FAIL() << "Tab never reaches " << title.toStdString();
}

test::ReceivedRequest SessionSteps::waitForRequest(size_t count) {
    waitUntil([&] { return provider_.requests().size() >= count; },
              QStringLiteral("request %1 arrives").arg(count));
    const auto requests = provider_.requests();
    EXPECT_EQ(requests.size(), count);
    return requests.back();
}

void SessionSteps::waitUntilSelected(const QString &text) {
    waitUntil([&] { return sessionDesktop().selectedText() == text; },
              QStringLiteral("\"%1\" is selected").arg(text));
}

void SessionSteps::expectTextByCopying(const QString &text) {
    QString found;
    // A paste can still be on its way into the application, so one copy may come too early.
    const auto copyHasText = [&] {
        const auto marker = sessionDesktop().ownClipboard(harness::ClipboardOwner::plainText({}));
        sessionDesktop().input().chord({XK_Control_L, XK_a});
        sessionDesktop().input().chord({XK_Control_L, XK_c});
        constexpr std::chrono::seconds oneCopy{2};
        if (harness::becomesTrue([&] { return !marker->ownsSelection(); }, oneCopy))
            found = QString::fromUtf8(sessionDesktop().readClipboard().bytes("UTF8_STRING"));
        return found == text;
    };
    harness::becomesTrue(copyHasText);
    EXPECT_EQ(found, text);
}

void SessionSteps::expectClipboardUntouched() {
    const harness::ClipboardContents now = sessionDesktop().readClipboard();
    EXPECT_EQ(now.representations, clipboardBefore_.representations);
    if (clipboard_->ownsSelection())
        ++ownReads_;
}

void SessionSteps::expectClipboardNeverTaken() {
    expectClipboardUntouched();
    EXPECT_TRUE(clipboard_->ownsSelection());
}

int SessionSteps::clipboardReads() const {
    return static_cast<int>(clipboard_->requests().count("image/png")) - ownReads_;
}

void SessionSteps::waitUntilWritten(int times) {
    waitUntil([&] { return program_->log().count(sessionLine + "written by ") >= times; },
              QStringLiteral("the answer was written"));
}

void SessionSteps::judgeLog() {
    if (!program_)
        return;
    const QByteArray log = program_->log();
    for (const QByteArray &line : log.split('\n')) {
        if (logMustBeEmpty_ && !line.startsWith(sessionLine) && !isToBeLogged(line)) {
            EXPECT_EQ(line.toStdString(), "");
        }
    }
    EXPECT_FALSE(log.contains(apiKey));
}

void SessionSteps::endSession() {
    program_.reset();
    clipboard_.reset();
}

QString promptOf(const test::ReceivedRequest &request) {
    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    return body[QStringLiteral("input")][1][QStringLiteral("content")][0][QStringLiteral("text")]
        .toString();
}

} // namespace quillmender
