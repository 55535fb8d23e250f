#include "platform/linux/wayland/kwin/ChordCodes.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <linux/input-event-codes.h>
#include <memory>
#include <xkbcommon/xkbcommon.h>

namespace quillmender::kwin {
namespace {

using wayland::TypedKeys;

/// The keyboard map of a desktop with these layouts.
QByteArray keymapOf(const char *layouts, const char *variants = "", const char *options = "") {
    xkb_context *const context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{"evdev", "pc105", layouts, variants, options};
    xkb_keymap *const keymap =
        xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    const std::unique_ptr<char, decltype(&std::free)> text(
        xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1), &std::free);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return text.get();
}

TEST(ChordCodesTest, OrdinaryLayouts) {
    for (const char *layout : {"us", "de", "fr"}) {
        const QByteArray keymap = keymapOf(layout);
        EXPECT_EQ(codesOf(TypedKeys::controlC, keymap, 0), (ChordCodes{KEY_LEFTCTRL, KEY_C}));
        EXPECT_EQ(codesOf(TypedKeys::controlV, keymap, 0), (ChordCodes{KEY_LEFTCTRL, KEY_V}));
        EXPECT_EQ(codesOf(TypedKeys::shiftInsert, keymap, 0),
                  (ChordCodes{KEY_LEFTSHIFT, KEY_INSERT}));
    }
}

TEST(ChordCodesTest, LettersInOtherPlaces) {
    const QByteArray keymap = keymapOf("us,us", "dvorak,");
    EXPECT_EQ(codesOf(TypedKeys::controlC, keymap, 0).key, quint32{KEY_I});
    EXPECT_EQ(codesOf(TypedKeys::controlV, keymap, 0).key, quint32{KEY_DOT});
    EXPECT_EQ(codesOf(TypedKeys::controlC, keymap, 1).key, quint32{KEY_C});
}

TEST(ChordCodesTest, ALayoutWithoutThemLeavesThemToTheFirstThatHasThem) {
    EXPECT_EQ(codesOf(TypedKeys::controlC, keymapOf("us,ru"), 1).key, quint32{KEY_C});
    EXPECT_EQ(codesOf(TypedKeys::controlC, keymapOf("us,ru", "dvorak,"), 1).key, quint32{KEY_I});
    EXPECT_EQ(codesOf(TypedKeys::controlV, keymapOf("gr,ru,us", ",,dvorak"), 1).key,
              quint32{KEY_DOT});
}

TEST(ChordCodesTest, WithoutLatinLettersTheirUsualPlacesCount) {
    EXPECT_EQ(codesOf(TypedKeys::controlC, keymapOf("ru"), 0), (ChordCodes{KEY_LEFTCTRL, KEY_C}));
    EXPECT_EQ(codesOf(TypedKeys::controlV, keymapOf("gr"), 0), (ChordCodes{KEY_LEFTCTRL, KEY_V}));
}

TEST(ChordCodesTest, ModifiersThatHaveChangedPlaces) {
    EXPECT_EQ(codesOf(TypedKeys::controlC, keymapOf("us", "", "ctrl:swapcaps"), 0).modifier,
              quint32{KEY_CAPSLOCK});
}

TEST(ChordCodesTest, NonsenseIsAKeyboardWithoutLetters) {
    for (const char *keymap : {"", "nonsense", "xkb_keymap {"})
        for (const quint32 layout : {0u, 7u, 0xffffffffu})
            EXPECT_EQ(codesOf(TypedKeys::controlC, keymap, layout),
                      (ChordCodes{KEY_LEFTCTRL, KEY_C}));
    EXPECT_EQ(codesOf(TypedKeys::controlV, keymapOf("us", "dvorak"), 9).key, quint32{KEY_DOT});
}

} // namespace
} // namespace quillmender::kwin
