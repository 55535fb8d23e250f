#include "platform/CharacterBoundary.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

TEST(CharacterBoundaryTest, ARangeLiesInsideTheText) {
    const QString text = QStringLiteral("short");
    for (const TextRange range : {TextRange{3, 3}, TextRange{6, 0}, TextRange{-1, 2},
                                  TextRange{0, -1}, TextRange{2, 9223372036854775807}})
        EXPECT_FALSE(fallsOnCharacterBoundaries(text, range)) << range.location;
    for (const TextRange range : {TextRange{0, 0}, TextRange{0, 5}, TextRange{5, 0}})
        EXPECT_TRUE(fallsOnCharacterBoundaries(text, range)) << range.location;
}

TEST(CharacterBoundaryTest, NoEndSplitsACharacter) {
    // a, family emoji of 8 units, e with a combining acute, CR LF
    const QString text = QStringLiteral("a\U0001F469\u200D\U0001F467\u200D\U0001F466e\u0301\r\n");
    for (const TextRange range :
         {TextRange{0, 2}, TextRange{2, 7}, TextRange{0, 4}, TextRange{9, 1}, TextRange{11, 1}})
        EXPECT_FALSE(fallsOnCharacterBoundaries(text, range)) << range.location;
    EXPECT_TRUE(fallsOnCharacterBoundaries(text, {1, 8}));
}

TEST(CharacterBoundaryTest, ForeignScriptsAreSegmentedFarInto) {
    const QString text = QStringLiteral("\u0915\u094D\u0937\u093F").repeated(5000);
    EXPECT_FALSE(fallsOnCharacterBoundaries(text, {1, 4}));
    EXPECT_TRUE(fallsOnCharacterBoundaries(text, {19'996, 4}));
}

} // namespace
} // namespace quillmender
