#include "Announcements.h"
#include "SettingsWindowFixture.h"
#include "ui/ToggleSwitch.h"

#include <QAccessible>
#include <QSignalSpy>

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

TEST_F(SettingsSpeechTest, TabIntoAnEmptyFieldTellsOfTheFocusAlone) {
    store().setModel(AIProvider::openAI, QStringLiteral("a-model"));
    show();
    TextField *key = field("OpenAI API Key");
    TextField *model = field("OpenAI Model");
    ASSERT_TRUE(key->text().isEmpty());
    const QSignalSpy ofKey(key, &QLineEdit::selectionChanged);
    const QSignalSpy ofModel(model, &QLineEdit::selectionChanged);
    button("Open Login Items Settings")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(key->hasFocus());
    EXPECT_EQ(ofKey.count(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(ofModel.count(), 1);
    EXPECT_EQ(model->selectedText(), model->text());
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
