#include "WindowWalk.h"

#include "SettingsWindowFixture.h"
#include "ui/AboutWindowController.h"
#include "ui/AlertWindow.h"
#include "ui/FormSection.h"
#include "ui/settings/ActionList.h"

#include <QComboBox>
#include <QScrollArea>

namespace quillmender {

namespace {

void expectSense(QWidget &window) {
    // A part that has come or gone moves the others in more than one turn.
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
    const WindowWalk walk(window);
    walk.expectNamesAndOrder();
    walk.expectNothingNamelessHasTheFocus();
}

QAccessible::Role roleOf(QWidget *widget) {
    return QAccessible::queryAccessibleInterface(widget)->role();
}

QStringList headings(const QWidget &window) {
    QStringList found;
    for (auto *label : window.findChildren<TextLabel *>())
        if (roleOf(label) == QAccessible::Heading)
            found.append(QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name));
    return found;
}

class PanelWalkTest : public PanelFixture {};

class SettingsWalkTest : public SettingsWindowFixture {};

/// About and an alert.
class WindowWalkTest : public testing::Test {
  protected:
    fakes::FakeAppearance appearance;
    fakes::FakeSymbols symbols;
    fakes::FakeOwnWindows ownWindows;
    Theme theme{appearance, symbols};
};

} // namespace

TEST_F(PanelWalkTest, EveryStateMakesSense) {
    show();
    expectSense(*controller.panel());
    change([](auto &state) {
        state.working = true;
        state.running = QStringLiteral("Simplify");
    });
    expectSense(*controller.panel());
    change([](auto &state) {
        state.working = false;
        state.error = QStringLiteral("It failed.");
        state.granted = false;
        state.instruction = QStringLiteral("do it");
    });
    expectSense(*controller.panel());
    change([](auto &state) {
        state.preview.clear();
        state.description.clear();
        for (int i = 0; i < 12; ++i)
            state.actions.append(PromptAction::custom(
                {QUuid::createUuid(), QStringLiteral("Custom %1").arg(i), QString()}));
    });
    expectSense(*controller.panel());
    change([](auto &state) { state.actions = state.actions.mid(0, 3); });
    expectSense(*controller.panel());
}

TEST_F(PanelWalkTest, ItsPartsAreHeadingsAndGroups) {
    show();
    EXPECT_EQ(headings(*controller.panel()),
              QStringList({QStringLiteral("Quillmender"), QStringLiteral("Selected Text"),
                           QStringLiteral("Generate From Prompt")}));
    QAccessibleInterface *actions =
        QAccessible::queryAccessibleInterface(button(QStringLiteral("Formalize")))->parent();
    EXPECT_EQ(actions->role(), QAccessible::Grouping);
    EXPECT_EQ(actions->text(QAccessible::Name).toStdString(), "Actions");
}

TEST_F(SettingsWalkTest, TheFormMakesSense) {
    loginItem.current = LoginItemStatus::enabled;
    store().addCustomAction(QStringLiteral("Mine"), QStringLiteral("x"));
    store().hideBuiltInAction(TextAction::casual);
    show();
    expectSense(*window());
    const WindowWalk walk(*window());
    QStringList firsts;
    for (QAccessibleInterface *object : walk.objects())
        firsts.append(object->text(QAccessible::Name));
    EXPECT_EQ(firsts.mid(0, 3),
              QStringList({QStringLiteral("Settings"),
                           QStringLiteral("Configure your provider, API key, and actions."),
                           QStringLiteral("Close")}));
    const auto actions = firsts.indexOf(QStringLiteral("Actions"));
    EXPECT_TRUE(firsts.at(actions + 1).startsWith(QStringLiteral("Every action becomes")));
    while (!rows().isEmpty()) {
        rows().first()->removeButton()->click();
        settle();
    }
    expectSense(*window());
}

TEST_F(SettingsWalkTest, ItsPartsAreHeadingsAndGroups) {
    show();
    EXPECT_EQ(headings(*window()).join(u'|').toStdString(),
              "Settings|Provider|Startup|OpenAI|Claude|Gemini|Security|Shortcut|Permissions|"
              "Actions");
    for (FormSection *section : window()->findChildren<FormSection *>()) {
        const bool hasTitle = !headings(*section).isEmpty();
        EXPECT_EQ(roleOf(section), hasTitle ? QAccessible::Grouping : QAccessible::Client);
        if (hasTitle) {
            EXPECT_EQ(section->accessibleName(), headings(*section).first());
        }
    }
    EXPECT_EQ(roleOf(window()->findChild<QScrollArea *>()), QAccessible::Form);
    auto *list = window()->findChild<ActionList *>();
    EXPECT_EQ(roleOf(list), QAccessible::List);
    EXPECT_EQ(list->accessibleName().toStdString(), "Actions");
    for (ActionRow *row : rows()) {
        EXPECT_EQ(roleOf(row), QAccessible::ListItem);
        EXPECT_FALSE(row->accessibleName().isEmpty());
    }
}

TEST_F(SettingsWalkTest, WhatRestsOnTheListIsARow) {
    show();
    rows().at(1)->removeButton()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    settle();
    EXPECT_EQ(roleOf(QApplication::focusWidget()), QAccessible::ListItem);
    while (!rows().isEmpty()) {
        rows().last()->removeButton()->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        settle();
    }
    expectSense(*window());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(QApplication::focusWidget())
                  ->text(QAccessible::Name)
                  .toStdString(),
              "No actions available.");
}

TEST_F(SettingsWalkTest, TheChosenProviderIsSaid) {
    show();
    for (const AIProvider provider : allProviders) {
        store().setSelectedProvider(provider);
        settle();
        EXPECT_EQ(QAccessible::queryAccessibleInterface(window()->findChild<QComboBox *>())
                      ->text(QAccessible::Description),
                  displayName(provider));
    }
}

TEST_F(SettingsWalkTest, TheEditorMakesSense) {
    show();
    button("New Action")->click();
    ASSERT_TRUE(sheet() && QTest::qWaitForWindowActive(sheet()));
    expectSense(*sheet());
    EXPECT_EQ(headings(*sheet()), QStringList(QStringLiteral("New Action")));
    const auto labels = QAccessible::queryAccessibleInterface(sheet()->templateEditor())
                            ->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.first().first->text(QAccessible::Name).toStdString(), "Prompt Template");
}

TEST_F(WindowWalkTest, AboutMakesSense) {
    AboutWindowController about(QStringLiteral("1.0.0"), theme, ownWindows);
    about.makeKeyAndOrderFront();
    ASSERT_TRUE(QTest::qWaitForWindowActive(about.window()));
    expectSense(*about.window());
    EXPECT_EQ(roleOf(about.window()->findChild<QScrollArea *>()), QAccessible::Pane);
    EXPECT_EQ(headings(*about.window()),
              QStringList({QStringLiteral("Quillmender"), QStringLiteral("Legal Notice")}));
}

TEST_F(WindowWalkTest, AnAlertMakesSense) {
    const Alert alert{
        QStringLiteral("Quillmender 2 is available"),
        QStringLiteral("Do you want it now?"),
        {QStringLiteral("Download"), QStringLiteral("Notes"), QStringLiteral("Later")}};
    AlertWindow window(alert, {}, theme, ownWindows);
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    expectSense(window);
    QAccessibleInterface *dialog = QAccessible::queryAccessibleInterface(&window);
    EXPECT_EQ(dialog->role(), QAccessible::Dialog);
    EXPECT_EQ(dialog->text(QAccessible::Description), alert.informativeText);
}

} // namespace quillmender
