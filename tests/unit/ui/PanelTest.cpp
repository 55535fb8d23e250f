#include "PanelFixture.h"

#include <QAccessible>
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

TEST_F(PanelTest, IsADialogOnTheAccessibilityBus) {
    show();
    QAccessibleInterface *panel = QAccessible::queryAccessibleInterface(controller.panel());
    EXPECT_EQ(panel->role(), QAccessible::Dialog);
    EXPECT_EQ(panel->text(QAccessible::Name).toStdString(), "Quillmender");
}

TEST_F(PanelTest, GetsItsAttributesBeforeItIsActivated) {
    show();
    const quintptr id = controller.panel()->winId();
    EXPECT_EQ(presence.calls, QStringList({QStringLiteral("applyPanelAttributes %1").arg(id),
                                           QStringLiteral("activateWindow %1").arg(id)}));
    controller.orderOut();
    show();
    EXPECT_EQ(presence.calls.last(), QStringLiteral("activateWindow %1").arg(id));
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

} // namespace quillmender
