#include "desktop/sessions/SessionFixture.h"

#include "support/ProviderAnswers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace quillmender {

using harness::Accessible;
using harness::AccessibleState;
using harness::ProductProcess;
using harness::waitUntil;

namespace {

const QString panelTitle = QStringLiteral("Quillmender");
const QByteArray apiKey = "sk-never-to-be-seen-in-a-log";

} // namespace

void SessionFixture::startDesktop(const harness::Desktop::Options &options) {
    DesktopTest::startDesktop(options);
    clipboard_.emplace(desktop().display(), harness::ClipboardOwner::textHtmlAndImage());
    clipboardBefore_ = harness::ClipboardProbe(desktop().display()).read();
    ownReads_ = 1;
    ASSERT_EQ(clipboardBefore_.representations, harness::ClipboardOwner::textHtmlAndImage());
}

void SessionFixture::startProgram(const QMap<QString, QString> &environment) {
    ProductProcess::Setup setup =
        ProductProcess::openAi(provider_.baseUrl() + QStringLiteral("/v1/responses"));
    setup.apiKeys[QStringLiteral("openAI")] = apiKey;
    setup.environment = environment;
    startProgram(setup);
}

void SessionFixture::startProgram(const ProductProcess::Setup &setup) {
    program_.emplace(desktop(), setup);
    program_->waitUntilReady();
}

void SessionFixture::start() {
    startDesktop();
    startProgram();
}

void SessionFixture::answerWith(const QString &text) {
    provider_.setAnswer(test::ScriptedAnswer::http(200, test::openAIBody(text)));
}

void SessionFixture::answerLater(const QString &text) {
    const auto answer = test::ScriptedAnswer::http(200, test::openAIBody(text));
    test::ScriptedAnswer held;
    held.hold();
    for (const auto &step : answer.steps())
        held.send(step.bytes);
    provider_.setAnswer(held);
}

void SessionFixture::pressHotKey() {
    input().chord({XK_Control_L, XK_Alt_L, XK_space});
}

xcb_window_t SessionFixture::waitForPanel() {
    xcb_window_t panel = XCB_WINDOW_NONE;
    waitUntil(
        [&] {
            panel = desktop().windows().titled(panelTitle);
            return panel != XCB_WINDOW_NONE && desktop().windows().active() == panel;
        },
        QStringLiteral("the panel is shown and active"));
    return panel;
}

xcb_window_t SessionFixture::waitForPanel(const QString &text) {
    const xcb_window_t panel = waitForPanel();
    waitUntil([&] { return panelShows(text); }, QStringLiteral("the panel shows \"%1\"").arg(text));
    return panel;
}

bool SessionFixture::panelShows(const QString &text) {
    return desktop()
        .accessible()
        .find(programId(),
              [&](const Accessible &widget) {
                  return widget.name() == text && widget.hasState(AccessibleState::showing);
              })
        .has_value();
}

void SessionFixture::waitUntilPanelIsGone() {
    waitUntil([&] { return desktop().windows().titled(panelTitle) == XCB_WINDOW_NONE; },
              QStringLiteral("the panel is gone"));
}

Accessible SessionFixture::button(const QString &title) {
    std::optional<Accessible> found;
    waitUntil(
        [&] {
            found = desktop().accessible().find(programId(), [&](const Accessible &widget) {
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

void SessionFixture::click(const QString &title) {
    const Accessible target = button(title);
    input().click(target.extents().center());
}

void SessionFixture::tabTo(const QString &title) {
    constexpr int moreThanAllControls = 30;
    const auto hasFocus = [](const Accessible &widget) {
        return widget.hasState(AccessibleState::focused) &&
               widget.roleName() != QStringLiteral("dialog");
    };
    for (int step = 0; step < moreThanAllControls; ++step) {
        const auto before = desktop().accessible().find(programId(), hasFocus);
        if (before && before->name() == title)
            return;
        input().chord({XK_Tab});
        waitUntil(
            [&] {
                const auto now = desktop().accessible().find(programId(), hasFocus);
                return now && !(before && *now == *before);
            },
            QStringLiteral("Tab moves the focus"));
    }
    FAIL() << "Tab never reaches " << title.toStdString();
}

test::ReceivedRequest SessionFixture::waitForRequest(size_t count) {
    waitUntil([&] { return provider_.requests().size() >= count; },
              QStringLiteral("request %1 arrives").arg(count));
    const auto requests = provider_.requests();
    EXPECT_EQ(requests.size(), count);
    return requests.back();
}

void SessionFixture::waitUntilSelected(const QString &text) {
    harness::ClipboardProbe primary(desktop().display(), "PRIMARY");
    waitUntil([&] { return primary.owner() != XCB_WINDOW_NONE && primary.text() == text; },
              QStringLiteral("\"%1\" is selected").arg(text));
}

void SessionFixture::expectTextByCopying(const QString &text) {
    QString found;
    // A paste can still be on its way into the application, so one copy may come too early.
    const auto copyHasText = [&] {
        harness::ClipboardProbe probe(desktop().display());
        const harness::ClipboardOwner marker(desktop().display(),
                                             harness::ClipboardOwner::plainText({}));
        input().chord({XK_Control_L, XK_a});
        input().chord({XK_Control_L, XK_c});
        constexpr std::chrono::seconds oneCopy{2};
        const auto isCopied = [&] {
            return probe.owner() != marker.window() && probe.owner() != XCB_WINDOW_NONE;
        };
        if (harness::becomesTrue(isCopied, oneCopy))
            found = probe.text();
        return found == text;
    };
    harness::becomesTrue(copyHasText);
    EXPECT_EQ(found, text);
}

void SessionFixture::expectClipboardUntouched() {
    const harness::ClipboardContents now = harness::ClipboardProbe(desktop().display()).read();
    EXPECT_EQ(now.representations, clipboardBefore_.representations);
    if (clipboard_->ownsSelection())
        ++ownReads_;
}

void SessionFixture::expectClipboardNeverTaken() {
    expectClipboardUntouched();
    EXPECT_TRUE(clipboard_->ownsSelection());
}

int SessionFixture::clipboardReads() const {
    return static_cast<int>(clipboard_->requests().count("image/png")) - ownReads_;
}

void SessionFixture::TearDown() {
    if (program_) {
        const QByteArray log = program_->log();
        if (logMustBeEmpty_) {
            EXPECT_EQ(log.toStdString(), "");
        }
        EXPECT_FALSE(log.contains(apiKey));
    }
    DesktopTest::TearDown();
    program_.reset();
    clipboard_.reset();
}

QString promptOf(const test::ReceivedRequest &request) {
    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    return body[QStringLiteral("input")][1][QStringLiteral("content")][0][QStringLiteral("text")]
        .toString();
}

} // namespace quillmender
