#include "Announcements.h"
#include "SettingsWindowFixture.h"
#include "ui/ToggleSwitch.h"

#include <QAccessible>

namespace quillmender {

namespace {

class SettingsSpeechTest : public SettingsWindowFixture {};

} // namespace

TEST_F(SettingsSpeechTest, AWindowThatOpensHasNoNews) {
    loginItem.current = LoginItemStatus::enabled;
    Announcements announcements(*window());
    show();
    EXPECT_EQ(announcements.take(), QStringList());
    window()->close();
    permissions.setAccessibilityGranted(true);
    show();
    EXPECT_TRUE(shows("Accessibility access granted"));
    EXPECT_EQ(announcements.take(), QStringList());
}

TEST_F(SettingsSpeechTest, WhoAsksForThePermissionIsAnswered) {
    Announcements announcements(*window());
    show();
    access.granted = false;
    button("Refresh")->click();
    settle();
    EXPECT_EQ(announcements.take(),
              QStringList(QStringLiteral("Accessibility access not granted")));
    access.granted = true;
    button("Refresh")->click();
    settle();
    EXPECT_EQ(announcements.take(), QStringList(QStringLiteral("Accessibility access granted")));
}

TEST_F(SettingsSpeechTest, WhatTheSystemSaysOfTheSwitchIsAnnounced) {
    Announcements announcements(*window());
    show();
    window()->findChild<ToggleSwitch *>()->click();
    settle();
    EXPECT_EQ(announcements.take(),
              QStringList(QStringLiteral("Quillmender will open automatically when you log in.")));
}

TEST_F(SettingsSpeechTest, AStatusIsATextLikeOthers) {
    loginItem.current = LoginItemStatus::enabled;
    show();
    for (const auto *label : shown<TextLabel>(window())) {
        const auto role =
            QAccessible::queryAccessibleInterface(const_cast<TextLabel *>(label))->role();
        EXPECT_TRUE(role == QAccessible::StaticText || role == QAccessible::Heading)
            << label->text().toStdString();
    }
}

} // namespace quillmender
