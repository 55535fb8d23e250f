#include "FrameworksTest.h"
#include "doubles/appkit/Symbols.h"
#include "platform/macos/MacPresence.h"

#include <cstring>

namespace quillmender {

namespace {

using testing::ElementsAre;

class SymbolTest : public FrameworksTest {
  protected:
    QByteArray image(const char *name, int size, quint32 color) {
        return presence.symbolImage(QLatin1String(name), size, color);
    }

    static quint32 pixel(const QByteArray &image, int size, int x, int y) {
        quint32 value = 0;
        std::memcpy(&value, image.constData() + (qsizetype{y} * size + x) * 4, sizeof value);
        return value;
    }

    doubles::Symbols &system = doubles::Symbols::shared();
    MacPresence presence;
};

} // namespace

TEST_F(SymbolTest, IsAskedForByItsNameOnly) {
    image("globe", 12, 0xff000000);
    EXPECT_THAT(calls(), ElementsAre("NSImage imageWithSystemSymbolName globe (nil)"));
}

TEST_F(SymbolTest, IsFittedIntoTheSquareAndTintedWithItsCoverage) {
    constexpr int size = 12;
    const QByteArray drawn = image("globe", size, 0xff336699);
    ASSERT_EQ(drawn.size(), size * size * 4);
    for (const int x : {0, 5, 11}) {
        EXPECT_EQ(pixel(drawn, size, x, 2), 0U) << "above";
        EXPECT_EQ(pixel(drawn, size, x, 3), 0xff336699U) << "the upper half";
        EXPECT_EQ(pixel(drawn, size, x, 5), 0xff336699U);
        EXPECT_EQ(pixel(drawn, size, x, 6), 0x55112233U) << "the lower half, premultiplied";
        EXPECT_EQ(pixel(drawn, size, x, 8), 0x55112233U);
        EXPECT_EQ(pixel(drawn, size, x, 9), 0U) << "below";
    }
}

TEST_F(SymbolTest, TransparentColorScalesTheCoverage) {
    const QByteArray drawn = image("globe", 12, 0x80ff0000);
    EXPECT_EQ(pixel(drawn, 12, 5, 4), 0x80800000U);
}

TEST_F(SymbolTest, UnknownSymbolIsEmpty) {
    EXPECT_TRUE(image("no.such.symbol", 16, 0xff000000).isEmpty());
}

TEST_F(SymbolTest, NoSizeIsEmpty) {
    EXPECT_TRUE(image("globe", 0, 0xff000000).isEmpty());
    EXPECT_TRUE(image("globe", -1, 0xff000000).isEmpty());
}

TEST_F(SymbolTest, BitmapThatCannotBeDrawnIntoIsEmpty) {
    system.hasNoContext = true;
    EXPECT_TRUE(image("globe", 16, 0xff000000).isEmpty());
}

} // namespace quillmender
