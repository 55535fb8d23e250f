#include "LookFixture.h"

#include <QCursor>

namespace quillmender {

namespace {

/// Centred to the pixel as far as the frame fits, and of that size only.
void expectCentred(const QWidget *window, const QSize &size) {
    EXPECT_EQ(window->size(), size);
    EXPECT_EQ(window->minimumSize(), size);
    EXPECT_EQ(window->maximumSize(), size);
    const QRect available = window->screen()->availableGeometry();
    EXPECT_EQ(window->geometry().x() - available.x(), (available.width() - size.width()) / 2);
    const int middle = (available.height() - size.height()) / 2;
    const int top = window->geometry().y() - available.y();
    EXPECT_TRUE(top == middle || (top == 40 && middle < 40)) << top;
}

void pointAt(int screen) {
    const QScreen *wanted = QGuiApplication::screens().at(screen);
    QCursor::setPos(wanted->geometry().center());
    ASSERT_EQ(QGuiApplication::screenAt(QCursor::pos()), wanted);
}

class PanelSizeTest : public PanelLookFixture {
  protected:
    void SetUp() override { pointAt(0); }
};
class SettingsSizeTest : public SettingsWindowFixture {
  protected:
    void SetUp() override { pointAt(0); }
};
class AboutSizeTest : public AboutLookFixture {
  protected:
    void SetUp() override { pointAt(0); }
};

} // namespace

TEST_F(PanelSizeTest, IsThatAtEachShow) {
    controller.centre(std::nullopt);
    show();
    expectCentred(controller.panel(), QSize(620, 620));
    controller.panel()->move(0, 0);
    controller.orderOut();
    controller.centre(std::nullopt);
    show();
    expectCentred(controller.panel(), QSize(620, 620));
}

TEST_F(PanelSizeTest, IsCentredWhenItIsMade) {
    expectCentred(controller.panel(), QSize(620, 620));
}

TEST_F(PanelSizeTest, FollowsTheSourceWindowAndNotThePointer) {
    pointAt(1);
    controller.centre(DesktopRect{100, 100, 400, 300});
    EXPECT_EQ(controller.panel()->screen(), QGuiApplication::screens().at(0));
    expectCentred(controller.panel(), QSize(620, 620));
    // Most of it is on the first.
    controller.centre(DesktopRect{1500, 100, 150, 300});
    EXPECT_EQ(controller.panel()->screen(), QGuiApplication::screens().at(0));
    controller.centre(DesktopRect{1550, 100, 150, 300});
    EXPECT_EQ(controller.panel()->screen(), QGuiApplication::screens().at(1));
    controller.centre(std::nullopt);
    EXPECT_EQ(controller.panel()->screen(), QGuiApplication::screens().at(1));
    expectCentred(controller.panel(), QSize(620, 512));
}

TEST_F(SettingsSizeTest, IsThatAtEachShow) {
    controller().centre();
    show();
    expectCentred(window(), QSize(760, 820));
    window()->move(0, 0);
    window()->close();
    controller().centre();
    show();
    expectCentred(window(), QSize(760, 820));
}

TEST_F(SettingsSizeTest, FitsALowScreen) {
    pointAt(1);
    controller().centre();
    show();
    EXPECT_EQ(window()->size(), QSize(684, 512)) << "with room for the frame";
    EXPECT_TRUE(window()->screen()->availableGeometry().contains(window()->geometry()));
    EXPECT_GE(window()->geometry().y(), 40);
}

TEST_F(AboutSizeTest, IsThatAtEachShow) {
    show();
    expectCentred(controller.window(), QSize(520, 420));
    controller.window()->move(0, 0);
    controller.window()->close();
    show();
    expectCentred(controller.window(), QSize(520, 420));
}

} // namespace quillmender
