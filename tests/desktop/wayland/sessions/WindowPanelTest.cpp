#include "desktop/harness/TestApplication.h"
#include "desktop/harness/wayland/SwayIpc.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include <QJsonArray>
#include <QJsonObject>

namespace quillmender {
namespace {

using harness::CompositorKind;
using harness::TestApplication;
using harness::waitUntil;

const QString wrong = QStringLiteral("recieve");
const QString right = QStringLiteral("receive");

QList<harness::WindowId> stickyWindows(const QJsonObject &node) {
    QList<harness::WindowId> found;
    if (node[QStringLiteral("sticky")].toBool())
        found.append(static_cast<harness::WindowId>(node[QStringLiteral("id")].toInteger()));
    for (const char *children : {"nodes", "floating_nodes"}) {
        for (const QJsonValue &child : node[QLatin1String(children)].toArray())
            found.append(stickyWindows(child.toObject()));
    }
    return found;
}

/// Sessions with the panel as an ordinary window, where the build or the compositor has no layer
/// shell.
class WindowPanelTest : public WaylandSessionFixture,
                        public testing::WithParamInterface<CompositorKind> {
  protected:
    // From the start on: KWin takes its time to see that an entry has another program.
    WindowPanelTest() { qputenv("QUILLMENDER_PROGRAM", QUILLMENDER_WINDOWED_PROGRAM); }

    CompositorKind kind() const override { return GetParam(); }

    // KWin is told of the program that it trusts before it starts.
    void SetUp() override {
        qputenv("QUILLMENDER_PROGRAM", QUILLMENDER_WINDOWED_PROGRAM);
        WaylandSessionFixture::SetUp();
    }

    void startWindowed(const QMap<QString, QString> &environment = {}) {
        auto setup =
            harness::ProductProcess::openAi(provider().baseUrl() + QStringLiteral("/v1/responses"));
        setup.environment = environment;
        setup.environment[QStringLiteral("QT_LOGGING_RULES")] =
            QStringLiteral("quillmender.session.info=true");
        startProgram(setup);
    }

    void expectInTheMiddle(harness::WindowId panel) {
        // labwc tells nobody where a window is.
        const QRect area = desktop().windows().geometry(panel);
        if (kind() == CompositorKind::labwc)
            return;
        constexpr int panelBreadth = 620;
        EXPECT_EQ(area.width(), panelBreadth);
        EXPECT_EQ(area.height(), panelBreadth);
        const QPoint off =
            area.center() - QRect(QPoint(), desktop().compositor().screen()).center();
        EXPECT_LE(qAbs(off.x()), 1);
        EXPECT_LE(qAbs(off.y()), 1);
    }
};

TEST_P(WindowPanelTest, HasTheKeyboardInTheMiddleOfTheScreen) {
    startDesktop();
    startWindowed();
    const TestApplication field =
        TestApplication::sampleEditor(desktop(), QStringLiteral("commands"), wrong);
    answerWith(right);
    for (int round = 0; round < 2; ++round) {
        pressHotKey();
        expectInTheMiddle(waitForPanel(wrong));
        click(QStringLiteral("Close"));
        waitUntilPanelIsGone();
        waitUntil([&] { return desktop().windows().active() == field.window(); },
                  QStringLiteral("the field has the focus again"));
    }
    pressHotKey();
    waitForPanel(wrong);
    tabTo(QStringLiteral("Fix My Grammar"));
    desktop().input().chord({XK_Return});
    waitForRequest();
    waitUntilPanelIsGone();
    waitUntilWritten();
    waitUntil([&] { return field.title() == right; }, QStringLiteral("the answer is in the field"));
    expectClipboardUntouched();
}

// It is seen on every workspace; what is said of it touches no other window.
TEST_P(WindowPanelTest, AloneIsSticky) {
    if (kind() != CompositorKind::sway)
        GTEST_SKIP() << "nothing is said to other compositors";
    startDesktop();
    startWindowed();
    const auto field = TestApplication::sampleEditor(desktop(), QStringLiteral("commands"), wrong);
    pressHotKey();
    const harness::WindowId panel = waitForPanel(wrong);
    const harness::SwayIpc ipc(desktop().environment().value(QStringLiteral("SWAYSOCK")));
    const auto isSticky = [&](harness::WindowId window) {
        return stickyWindows(ipc.ask(harness::SwayIpc::Message::getTree).object()).contains(window);
    };
    EXPECT_TRUE(isSticky(panel));
    EXPECT_FALSE(isSticky(field.window()));
}

// A compositor that is not told how the panel is to stand.
TEST_P(WindowPanelTest, FloatsByItsFixedSizeAlone) {
    if (kind() != CompositorKind::sway)
        GTEST_SKIP() << "nothing is said to other compositors";
    startDesktop();
    allowLog();
    startWindowed({{QStringLiteral("SWAYSOCK"), QString()}});
    const auto editor = TestApplication::mousepad(desktop(), wrong);
    program().activateAction(QStringLiteral("transform"));
    expectInTheMiddle(waitForPanel());
}

INSTANTIATE_TEST_SUITE_P(On, WindowPanelTest, harness::everyCompositor(), harness::compositorName);

} // namespace
} // namespace quillmender
