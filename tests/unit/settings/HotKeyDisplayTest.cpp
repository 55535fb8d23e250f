#include "settings/HotKeyDisplay.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

TEST(HotKeyDisplayTest, NamesTheKeys) {
    EXPECT_EQ(hotKeyDisplay(askedHotKey).toStdString(), "Control + Option + Space");
    const Qt::KeyboardModifiers all =
        Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier | Qt::MetaModifier;
    EXPECT_EQ(hotKeyDisplay(QKeyCombination(all, Qt::Key_Q)).toStdString(),
              "Control + Option + Shift + Command + Q");
    EXPECT_EQ(hotKeyDisplay(QKeyCombination(Qt::Key_F12)).toStdString(), "F12");
    EXPECT_EQ(hotKeyDisplay(QKeyCombination(Qt::MetaModifier, Qt::Key_Plus)).toStdString(),
              "Command + +");
}

} // namespace
} // namespace quillmender
