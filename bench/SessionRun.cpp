#include "bench/SessionRun.h"

#include "bench/PaintWatch.h"
#include "bench/PasteField.h"
#include "bench/ProcessFacts.h"
#include "bench/Stage.h"
#include "support/ProviderAnswers.h"

#include <X11/keysym.h>

namespace quillmender::bench {

namespace {

using std::chrono::steady_clock;

constexpr QSize panelSize(620, 620);
const auto panelTitle = QStringLiteral("Quillmender");
const auto action = QStringLiteral("Fix My Grammar");

} // namespace

SessionRun::SessionRun(Stage &stage) : stage_(stage) {
    program_.emplace(stage.desktop(), harness::ProductProcess::openAi(
                                          provider_.baseUrl() + QStringLiteral("/v1/responses")));
    program_->waitUntilReady();
    waitUntilIdle(program_->pid());
}

SessionRun::Times SessionRun::run(Editor &editor, const QString &text, const QString &answer) {
    editor.activate();
    editor.fill(text);
    return play(editor.window(), answer,
                [&] { return editor.waitForCharacterCount(static_cast<int>(answer.size())); });
}

SessionRun::Times SessionRun::run(PasteField &field, const QString &answer) {
    field.activate();
    return play(field.window(), answer, [&] { return field.waitForText(answer.size()); });
}

SessionRun::Times SessionRun::play(harness::WindowId editor, const QString &answer,
                                   const std::function<TimePoint()> &waitForText) {
    const auto body = test::ScriptedAnswer::http(200, test::openAIBody(answer));
    provider_.setResponder([this, body](const test::ReceivedRequest &) {
        answeredAt_ = steady_clock::now();
        return test::ScriptedAnswer(body);
    });
    const size_t requestsBefore = provider_.requests().size();

    Times times{};
    times.captureMs = showPanelMs();
    stage_.desktop().input().movePointer(actionPosition());
    stage_.paint().waitUntilStill(std::chrono::milliseconds(100));

    const TimePoint pressed = steady_clock::now();
    stage_.desktop().input().click(actionPosition());
    const TimePoint written = waitForText();
    times.requestMs = milliseconds(pressed, provider_.requests().at(requestsBefore).arrivedAt);
    times.answered = answeredAt_;
    times.writeBackMs = milliseconds(times.answered, written);
    waitUntilOver(editor);
    return times;
}

double SessionRun::showPanelMs() {
    stage_.paint().waitUntilStill(std::chrono::milliseconds(150));
    stage_.paint().start();
    harness::UserInput &input = stage_.desktop().input();
    input.press(XK_Control_L);
    input.press(XK_Alt_L);
    const TimePoint pressed = steady_clock::now();
    input.press(XK_space);
    input.release(XK_space);
    input.release(XK_Alt_L);
    input.release(XK_Control_L);
    return milliseconds(pressed, stage_.paint().waitForPaint(panelSize));
}

// The panel stands at the same place each time.
QPoint SessionRun::actionPosition() {
    if (!actionPosition_) {
        const harness::Accessible button = stage_.desktop().accessible().waitFor(
            program_->pid(), QStringLiteral("push button"), action);
        stage_.waitForWindow(program_->pid(), panelTitle);
        actionPosition_ = stage_.middleOf(button, program_->pid(), panelTitle);
    }
    return *actionPosition_;
}

void SessionRun::waitUntilOver(harness::WindowId editor) {
    stage_.waitUntilHidden(program_->pid(), panelTitle);
    harness::waitUntil([&] { return stage_.desktop().windows().active() == editor; },
                       QStringLiteral("the editor has the focus"));
}

} // namespace quillmender::bench
