#include "bench/SessionRun.h"

#include "bench/ProcessFacts.h"
#include "support/ProviderAnswers.h"

#include <X11/keysym.h>

namespace quillmender::bench {

namespace {

using std::chrono::steady_clock;

constexpr QSize panelSize(620, 620);
const auto panelTitle = QStringLiteral("Quillmender");
const auto action = QStringLiteral("Fix My Grammar");

} // namespace

SessionRun::SessionRun(harness::Desktop &desktop) : desktop_(desktop), paint_(desktop.display()) {
    program_.emplace(desktop_, harness::ProductProcess::openAi(provider_.baseUrl() +
                                                               QStringLiteral("/v1/responses")));
    program_->waitUntilReady();
    waitUntilIdle(program_->pid());
}

SessionRun::Times SessionRun::run(Editor &editor, const QString &text, const QString &answer) {
    editor.activate();
    editor.fill(text);
    const auto body = test::ScriptedAnswer::http(200, test::openAIBody(answer));
    provider_.setResponder([this, body](const test::ReceivedRequest &) {
        answeredAt_ = steady_clock::now();
        return test::ScriptedAnswer(body);
    });
    const size_t requestsBefore = provider_.requests().size();

    Times times{};
    times.captureMs = showPanelMs();
    desktop_.input().movePointer(actionPosition());
    paint_.waitUntilStill(std::chrono::milliseconds(100));

    const TimePoint pressed = steady_clock::now();
    desktop_.input().click(actionPosition());
    const TimePoint written = editor.waitForCharacterCount(static_cast<int>(answer.size()));
    times.requestMs = milliseconds(pressed, provider_.requests().at(requestsBefore).arrivedAt);
    times.writeBackMs = milliseconds(answeredAt_, written);
    waitUntilOver(editor);
    return times;
}

double SessionRun::showPanelMs() {
    paint_.waitUntilStill(std::chrono::milliseconds(150));
    paint_.start();
    harness::InputDriver &input = desktop_.input();
    input.press(XK_Control_L);
    input.press(XK_Alt_L);
    const TimePoint pressed = steady_clock::now();
    input.press(XK_space);
    input.release(XK_space);
    input.release(XK_Alt_L);
    input.release(XK_Control_L);
    return milliseconds(pressed, paint_.waitForPaint(panelSize));
}

// The panel stands at the same place each time.
QPoint SessionRun::actionPosition() {
    if (!actionPosition_) {
        const harness::Accessible button =
            desktop_.accessible().waitFor(program_->pid(), QStringLiteral("push button"), action);
        harness::waitUntil(
            [&] {
                const xcb_window_t panel = desktop_.windows().titled(panelTitle);
                return panel != XCB_WINDOW_NONE && desktop_.windows().active() == panel;
            },
            QStringLiteral("the panel has the focus"));
        actionPosition_ = button.extents().center();
    }
    return *actionPosition_;
}

void SessionRun::waitUntilOver(const Editor &editor) {
    harness::waitUntil(
        [&] {
            return desktop_.windows().titled(panelTitle) == XCB_WINDOW_NONE &&
                   desktop_.windows().active() == editor.window();
        },
        QStringLiteral("the panel is hidden and the editor has the focus"));
}

} // namespace quillmender::bench
