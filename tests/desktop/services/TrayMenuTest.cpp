#include "platform/linux/services/TrayMenu.h"

#include <gtest/gtest.h>

namespace quillmender {

TEST(TrayMenuTest, ShowsTitlesShortcutsAndHidesWhatIsHidden) {
    int pressed = 0;
    TrayMenu menu(
        {{QStringLiteral("Transform"),
          QKeyCombination(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space), false,
          [&pressed] { ++pressed; }},
         {QStringLiteral("Settings"), QKeyCombination(Qt::MetaModifier, Qt::Key_Comma), false, {}},
         {QStringLiteral("This & That"), std::nullopt, true, {}},
         {QStringLiteral("Quit"), QKeyCombination(Qt::MetaModifier, Qt::Key_Q), false, {}}});
    const QList<QAction *> actions = menu.actions();
    ASSERT_EQ(actions.size(), 4);
    EXPECT_EQ(actions[0]->shortcut().toString().toStdString(), "Ctrl+Alt+Space");
    EXPECT_EQ(actions[1]->shortcut().toString().toStdString(), "Ctrl+,");
    EXPECT_TRUE(actions[2]->shortcut().isEmpty());
    EXPECT_EQ(actions[3]->shortcut().toString().toStdString(), "Ctrl+Q");
    EXPECT_FALSE(actions[2]->isVisible());
    EXPECT_EQ(actions[2]->text().toStdString(), "This && That");
    actions[0]->trigger();
    EXPECT_EQ(pressed, 1);

    menu.update(2, QStringLiteral("Shown"), false);
    EXPECT_TRUE(actions[2]->isVisible());
    EXPECT_EQ(actions[2]->text().toStdString(), "Shown");
    menu.update(-1, QStringLiteral("x"), true);
    menu.update(4, QStringLiteral("x"), true);
}

} // namespace quillmender
