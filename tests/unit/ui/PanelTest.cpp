#include "Announcements.h"
#include "PanelFixture.h"
#include "ui/ReadyPanel.h"

#include <QAccessible>
#include <QBackingStore>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

namespace quillmender {

namespace {

class PanelTest : public PanelFixture {};

} // namespace

TEST_F(PanelTest, WindowIsTitledFixedAndNeitherMinimisableNorZoomable) {
    show();
    const ActionPanel *panel = controller.panel();
    EXPECT_EQ(panel->windowTitle().toStdString(), "Quillmender");
    EXPECT_EQ(panel->size(), QSize(620, 620).boundedTo(panel->screen()->availableSize()));
    EXPECT_EQ(panel->minimumSize(), panel->maximumSize());
    EXPECT_TRUE(panel->windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_FALSE(panel->windowFlags() & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(panel->windowFlags() & Qt::WindowMaximizeButtonHint);
}

TEST_F(PanelTest, IsNotMirrored) {
    show();
    EXPECT_EQ(controller.panel()->layoutDirection(), Qt::LeftToRight);
    EXPECT_LT(button(QStringLiteral("Formalize"))->x(), button(QStringLiteral("Simplify"))->x());
}

TEST_F(PanelTest, IsADialogOnTheAccessibilityBus) {
    show();
    QAccessibleInterface *panel = QAccessible::queryAccessibleInterface(controller.panel());
    EXPECT_EQ(panel->role(), QAccessible::Dialog);
    EXPECT_EQ(panel->text(QAccessible::Name).toStdString(), "Quillmender");
}

TEST_F(PanelTest, GetsItsAttributesBeforeItIsActivated) {
    show();
    const QWindow *window = controller.panel()->windowHandle();
    ASSERT_TRUE(window);
    EXPECT_EQ(ownWindows.calls, QList<Call>({{QStringLiteral("applyPanelAttributes"), window},
                                             {QStringLiteral("activate"), window}}));
    controller.orderOut();
    show();
    EXPECT_EQ(ownWindows.calls.last(), (Call{QStringLiteral("activate"), window}));
}

TEST_F(PanelTest, ClosingKeepsTheNativeWindow) {
    show();
    const WId native = controller.panel()->winId();
    const auto calls = ownWindows.calls;
    ASSERT_TRUE(controller.panel()->windowHandle()->close());
    EXPECT_FALSE(controller.isVisible());
    EXPECT_EQ(controller.panel()->internalWinId(), native);
    EXPECT_EQ(ownWindows.calls, calls);
    show();
    EXPECT_TRUE(controller.isVisible());
}

TEST_F(PanelTest, IsDrawnBeforeTheWindowSystemHasPlacedItAndOnlyOnce) {
    struct Counter : QObject {
        bool eventFilter(QObject *, QEvent *event) override {
            painted += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int painted = 0;
    } counter;
    controller.getReady();
    controller.panel()->installEventFilter(&counter);
    int shownBeforePainted = 0;
    ownWindows.whenFlushed = [&] {
        shownBeforePainted += controller.isVisible() && counter.painted == 0 ? 1 : 0;
    };
    controller.makeKeyAndOrderFront();
    EXPECT_EQ(counter.painted, 1) << "in the same turn";
    EXPECT_EQ(shownBeforePainted, 1) << "the window system places it meanwhile";
}

TEST_F(PanelTest, GettingReadyShowsNothing) {
    controller.getReady();
    EXPECT_FALSE(controller.isVisible());
    EXPECT_FALSE(controller.panel()->windowHandle()->isVisible());
    EXPECT_EQ(controller.panel()->backingStore()->size(), controller.panel()->size());
    constexpr std::size_t picture = 620 * 620 * 4;
    EXPECT_EQ(ownWindows.memoryProvided, picture);
    show();
    controller.getReady();
    EXPECT_TRUE(controller.isVisible());
    EXPECT_EQ(ownWindows.memoryProvided, picture) << "it has it already";
    controller.orderOut();
    EXPECT_EQ(controller.panel()->backingStore()->size(), QSize(1, 1)) << "given back";
}

TEST_F(PanelTest, IsMadeReadyPieceByPieceAndTakenOverAsItIs) {
    for (int made = 0; made < 20; ++made) {
        fakes::FakeOwnWindows windows;
        ReadyPanel ready(model, theme, windows);
        for (int piece = 0; piece < made; ++piece)
            ready.prepareMore();
        ActionPanelController other(ready, windows);
        EXPECT_FALSE(other.isVisible()) << made;
        other.makeKeyAndOrderFront();
        EXPECT_TRUE(other.isVisible()) << made;
        const QWindow *window = other.panel()->windowHandle();
        EXPECT_EQ(windows.calls, QList<Call>({{QStringLiteral("applyPanelAttributes"), window},
                                              {QStringLiteral("activate"), window}}))
            << made;
        EXPECT_FALSE(ready.prepareMore()) << made;
    }
}

TEST_F(PanelTest, IsDrawnToItsEndBeforeTheFirstShow) {
    struct Painted : QObject {
        bool eventFilter(QObject *, QEvent *event) override {
            if (event->type() == QEvent::Paint)
                region += static_cast<QPaintEvent *>(event)->region();
            return false;
        }
        QRegion region;
    } painted;
    fakes::FakeOwnWindows windows;
    ReadyPanel ready(model, theme, windows);
    QWidget *const view = ready.view();
    view->installEventFilter(&painted);
    while (ready.prepareMore()) {
    }
    const QSize size = QSize(620, 620);
    EXPECT_EQ(view->size(), size);
    EXPECT_EQ(painted.region, QRegion(QRect(QPoint(), size)));
    EXPECT_EQ(view->window()->windowHandle()->size(), size);
    EXPECT_FALSE(view->isVisible());
}

TEST_F(PanelTest, HasRoundCornersWhereNobodyFramesIt) {
    const auto cornerOf = [this](bool isFramed) {
        fakes::FakeOwnWindows windows;
        windows.frames = isFramed;
        ActionPanelController made(model, theme, windows);
        return made.panel()->grab().toImage().pixelColor(0, 0);
    };
    EXPECT_EQ(cornerOf(true).alpha(), 255);
    EXPECT_EQ(cornerOf(false).alpha(), 0);
}

TEST_F(PanelTest, ComesOnTheScreenThatTheWindowSystemTellsOf) {
    for (QScreen *screen : QGuiApplication::screens()) {
        ownWindows.screen = screen;
        controller.centre(std::nullopt);
        EXPECT_EQ(controller.panel()->screen(), screen);
    }
}

TEST_F(PanelTest, StaysOnScreenDuringAWriteBackWhereItMay) {
    show();
    EXPECT_EQ(controller.stepAside(), nullptr);
    EXPECT_TRUE(controller.isVisible());
}

TEST_F(PanelTest, ComesBackAfterAWriteBackThatFailed) {
    ownWindows.needsSteppingAside = true;
    show();
    auto aside = controller.stepAside();
    ASSERT_TRUE(aside);
    EXPECT_EQ(ownWindows.calls.last(),
              (Call{QStringLiteral("stepAside"), controller.panel()->windowHandle()}));
    EXPECT_FALSE(controller.isVisible());
    aside.reset();
    EXPECT_TRUE(controller.isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowExposed(controller.panel()));
}

TEST_F(PanelTest, StaysAwayAfterAWriteBackThatSucceeded) {
    ownWindows.needsSteppingAside = true;
    show();
    controller.stepAside()->stayAway();
    EXPECT_FALSE(controller.isVisible());
    show();
    EXPECT_TRUE(controller.isVisible()) << "for the next session";
}

TEST_F(PanelTest, APanelThatWasOrderedOutMeanwhileDoesNotComeBack) {
    ownWindows.needsSteppingAside = true;
    show();
    auto aside = controller.stepAside();
    controller.orderOut();
    aside.reset();
    EXPECT_FALSE(controller.isVisible());
}

TEST_F(PanelTest, ComesBackWhenTheLastOfTwoWriteBacksHasEnded) {
    ownWindows.needsSteppingAside = true;
    show();
    auto first = controller.stepAside();
    auto second = controller.stepAside();
    first.reset();
    EXPECT_FALSE(controller.isVisible());
    second.reset();
    EXPECT_TRUE(controller.isVisible());
}

TEST_F(PanelTest, AnEarlierWriteBackLeavesALaterOnesPanelAside) {
    ownWindows.needsSteppingAside = true;
    show();
    auto earlier = controller.stepAside();
    show();
    auto later = controller.stepAside();
    earlier.reset();
    EXPECT_FALSE(controller.isVisible());
    later.reset();
    EXPECT_TRUE(controller.isVisible());
}

TEST_F(PanelTest, ClosingByTheTitleBarOnlyHides) {
    show();
    QTest::keyClicks(editor(), QStringLiteral("keep me"));
    const QWidget *view = controller.view();
    EXPECT_TRUE(controller.panel()->close());
    EXPECT_FALSE(controller.isVisible());
    EXPECT_EQ(model.calls, QStringList()) << "nothing is reset";
    show();
    EXPECT_EQ(controller.view(), view);
    EXPECT_EQ(editor()->toPlainText().toStdString(), "keep me");
    EXPECT_EQ(model.state().instruction.toStdString(), "keep me");
}

TEST_F(PanelTest, StaysCentredOnTheScreenWithTheSourceWindow) {
    controller.centre(DesktopRect{10, 10, 100, 100});
    show();
    const QRect available = controller.panel()->screen()->availableGeometry();
    for (const DesktopRect &source :
         {DesktopRect{10, 10, 100, 100}, DesktopRect{-5000, -5000, 10, 10}}) {
        controller.panel()->move(0, 0);
        controller.centre(source);
        const QPoint off = controller.panel()->frameGeometry().center() - available.center();
        EXPECT_LE(qAbs(off.x()), 1) << source.x;
        EXPECT_LE(qAbs(off.y()), 1) << source.x;
    }
}

TEST_F(PanelTest, ScrollsToTheTopAtEachShow) {
    show();
    QScrollBar *bar = controller.panel()->findChild<QScrollArea *>()->verticalScrollBar();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar->maximum() > 0; }, 5000));
    bar->setValue(bar->maximum());
    controller.orderOut();
    show();
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(PanelTest, SaysWhereTheKeyboardIsWhileItIsElsewhere) {
    constexpr auto usual = "Transform the captured text and replace it in place.";
    constexpr auto withheld =
        "The keyboard is still with another window. Click here to type, or use the mouse.";
    show();
    Announcements announcements(*controller.panel());
    EXPECT_TRUE(shows(usual));
    QWindow elsewhere;
    ownWindows.tellOfKeyboard(&elsewhere, true);
    EXPECT_TRUE(shows(usual)) << "it is said of another window";
    const QSize size = controller.panel()->size();
    ownWindows.tellOfKeyboard(controller.panel()->windowHandle(), true);
    EXPECT_TRUE(shows(withheld));
    EXPECT_EQ(announcements.take(), QStringList(QString::fromLatin1(withheld)));
    ownWindows.tellOfKeyboard(controller.panel()->windowHandle(), false);
    EXPECT_TRUE(shows(usual));
    EXPECT_EQ(announcements.take(), QStringList());
    EXPECT_EQ(controller.panel()->size(), size);
}

} // namespace quillmender
