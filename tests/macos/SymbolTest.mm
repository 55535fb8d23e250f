#include "FrameworksTest.h"
#include "doubles/appkit/Symbols.h"
#include "platform/macos/MacSymbols.h"

namespace quillmender {

namespace {

using testing::ElementsAre;

class SymbolTest : public FrameworksTest {
  protected:
    QImage image(const char *name, int size, QRgb color) {
        return symbols.image(QLatin1String(name), size, QColor::fromRgba(color));
    }

    // QImage::pixel() would take the premultiplication back.
    static QRgb pixel(const QImage &image, int x, int y) {
        return reinterpret_cast<const QRgb *>(image.constScanLine(y))[x];
    }

    doubles::Symbols &system = doubles::Symbols::shared();
    MacSymbols symbols;
};

} // namespace

TEST_F(SymbolTest, IsAskedForByItsNameOnly) {
    image("globe", 12, 0xff000000);
    EXPECT_THAT(calls(), ElementsAre("NSImage imageWithSystemSymbolName globe (nil)"));
}

TEST_F(SymbolTest, IsFittedIntoTheSquareAndTintedWithItsCoverage) {
    constexpr int size = 12;
    const QImage drawn = image("globe", size, 0xff336699);
    ASSERT_EQ(drawn.size(), QSize(size, size));
    ASSERT_EQ(drawn.format(), QImage::Format_ARGB32_Premultiplied);
    for (const int x : {0, 5, 11}) {
        EXPECT_EQ(pixel(drawn, x, 2), 0U) << "above";
        EXPECT_EQ(pixel(drawn, x, 3), 0xff336699U) << "the upper half";
        EXPECT_EQ(pixel(drawn, x, 5), 0xff336699U);
        EXPECT_EQ(pixel(drawn, x, 6), 0x55112233U) << "the lower half, premultiplied";
        EXPECT_EQ(pixel(drawn, x, 8), 0x55112233U);
        EXPECT_EQ(pixel(drawn, x, 9), 0U) << "below";
    }
}

TEST_F(SymbolTest, TransparentColorScalesTheCoverage) {
    const QImage drawn = image("globe", 12, 0x80ff0000);
    EXPECT_EQ(pixel(drawn, 5, 4), 0x80800000U);
}

TEST_F(SymbolTest, UnknownSymbolIsNull) {
    EXPECT_TRUE(image("no.such.symbol", 16, 0xff000000).isNull());
}

TEST_F(SymbolTest, NoSizeIsNull) {
    EXPECT_TRUE(image("globe", 0, 0xff000000).isNull());
    EXPECT_TRUE(image("globe", -1, 0xff000000).isNull());
}

TEST_F(SymbolTest, BitmapThatCannotBeDrawnIntoIsNull) {
    system.hasNoContext = true;
    EXPECT_TRUE(image("globe", 16, 0xff000000).isNull());
}

} // namespace quillmender
