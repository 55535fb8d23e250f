#include "PanelFixture.h"
#include "SettingsWindowFixture.h"

namespace quillmender {
namespace {

QStringList withNativeFocusRing(const QWidget &window) {
    QStringList found;
    for (const QWidget *widget : window.findChildren<QWidget *>())
        if (widget->testAttribute(Qt::WA_MacShowFocusRect))
            found.append(QString::fromLatin1(widget->metaObject()->className()));
    found.removeDuplicates();
    return found;
}

class NativePanelTest : public PanelFixture {};
class NativeSettingsTest : public SettingsWindowFixture {};

TEST_F(NativePanelTest, WhatTheFrameCoversIsKeptFree) {
    ownWindows.covered = 28;
    show();
    const ActionPanel &panel = *controller.panel();
    EXPECT_EQ(panel.size(), QSize(620, 620));
    EXPECT_EQ(controller.view()->geometry(), QRect(0, 28, 620, 592));
}

TEST_F(NativePanelTest, NothingIsKeptFreeWhereTheFrameCoversNothing) {
    show();
    EXPECT_EQ(controller.view()->geometry(), QRect(0, 0, 620, 620));
}

TEST_F(NativePanelTest, ControlsHaveTheirOwnFocusRingAlone) {
    show();
    EXPECT_EQ(withNativeFocusRing(*controller.panel()), QStringList());
}

TEST_F(NativeSettingsTest, ControlsHaveTheirOwnFocusRingAlone) {
    show();
    EXPECT_EQ(withNativeFocusRing(*window()), QStringList());
    button("New Action")->click();
    ASSERT_TRUE(window()->findChild<ActionEditorSheet *>());
    EXPECT_EQ(withNativeFocusRing(*window()), QStringList());
}

TEST_F(NativeSettingsTest, AttributesAreGivenAgainWhenItFloatsAndWhenItEnds) {
    show();
    ActionPanel panel(new QWidget);
    panel.show();
    ownWindows.calls.clear();
    show();
    const Call again{QStringLiteral("applyWindowAttributes"), window()->windowHandle()};
    EXPECT_TRUE(ownWindows.calls.contains(again));
    ownWindows.calls.clear();
    panel.hide();
    EXPECT_EQ(ownWindows.calls, QList<Call>({again}));
}

} // namespace
} // namespace quillmender
