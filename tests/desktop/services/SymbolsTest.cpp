#include "platform/linux/services/DrawnSymbols.h"

#include <gtest/gtest.h>

namespace quillmender {

TEST(SymbolsTest, EveryNamedSymbolIsDrawnInItsColourInsideItsSquare) {
    for (const char *name : {"text.quote", "textformat.alt", "line.3.horizontal.decrease",
                             "bubble.left.and.exclamationmark.bubble.right", "globe",
                             "checkmark.bubble", "sparkles.rectangle.stack"}) {
        for (const int size : {16, 20, 40}) {
            const QImage image = drawSymbol(QString::fromLatin1(name), size, Qt::red);
            ASSERT_EQ(image.size(), QSize(size, size)) << name;
            int painted = 0;
            for (int y = 0; y < size; ++y)
                for (int x = 0; x < size; ++x)
                    painted += image.pixelColor(x, y).alpha() > 128;
            EXPECT_GT(painted, size * size / 20) << name;
            for (int i = 0; i < size; ++i) {
                EXPECT_LT(image.pixelColor(i, 0).alpha(), 128) << name;
                EXPECT_LT(image.pixelColor(0, i).alpha(), 128) << name;
            }
            EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << name;
        }
    }
}

TEST(SymbolsTest, SharpLinesFillWholePixels) {
    const QString name = QStringLiteral("text.quote");
    for (const auto &[size, width] : {std::pair(12, 1), std::pair(16, 2), std::pair(24, 3)}) {
        const QImage image = drawSharpSymbol(name, size, width, Qt::white);
        // Across the bar on the left, and down through the three lines.
        QList<int> across;
        QList<int> down;
        for (int at = 0; at < size; ++at) {
            across.append(image.pixelColor(at, size * 3 / 8).alpha());
            down.append(image.pixelColor(size / 2, at).alpha());
        }
        across.resize(size / 4 + width / 2);
        EXPECT_EQ(across.count(255), width) << size;
        EXPECT_EQ(across.count(0), across.size() - width) << size;
        EXPECT_EQ(down.count(255), 3 * width) << size;
        EXPECT_EQ(down.count(0), size - 3 * width) << size;
    }
    EXPECT_TRUE(drawSharpSymbol(QStringLiteral("no.such"), 16, 2, Qt::white).isNull());
}

TEST(SymbolsTest, ImageIsPremultiplied) {
    const QImage image =
        DrawnSymbols().image(QStringLiteral("globe"), 20, QColor::fromRgba(0x80ff0000));
    ASSERT_EQ(image.size(), QSize(20, 20));
    ASSERT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            EXPECT_LE(qRed(reinterpret_cast<const QRgb *>(image.constScanLine(y))[x]), 0x80);
}

TEST(SymbolsTest, UnknownSymbolIsNull) {
    EXPECT_TRUE(DrawnSymbols().image(QStringLiteral("no.such"), 20, Qt::white).isNull());
    EXPECT_TRUE(DrawnSymbols().image(QStringLiteral("globe"), 0, Qt::white).isNull());
}

} // namespace quillmender
