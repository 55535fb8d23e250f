#include "platform/linux/atspi/TextUnits.h"

#include <gtest/gtest.h>

namespace quillmender::atspi {
namespace {

const QString rocket = QStringLiteral("\U0001F680");
const QString mixed = QStringLiteral("a") + rocket + QStringLiteral("b") + rocket;

TEST(TextUnitsTest, CountTellsTheUnit) {
    EXPECT_EQ(decodeText(mixed, 6, false).unit, OffsetUnit::utf16);
    EXPECT_EQ(decodeText(mixed, 4, false).unit, OffsetUnit::codePoints);
    EXPECT_EQ(decodeText(mixed, 5, false).unit, std::nullopt);
    EXPECT_EQ(decodeText(mixed, 3, false).unit, std::nullopt);
    EXPECT_EQ(decodeText(mixed, 7, false).unit, std::nullopt);
    EXPECT_EQ(decodeText(QStringLiteral("h\u00e9"), 2, false).unit, OffsetUnit::utf16);
    EXPECT_EQ(decodeText(QStringLiteral("h\u00e9"), 3, false).unit, std::nullopt);
    EXPECT_EQ(decodeText(QString(), 0, false).unit, OffsetUnit::utf16);
}

TEST(TextUnitsTest, PaddingIsRemovedOnlyWhereTheToolkitPads) {
    const QString pad = QStringLiteral("\uFEFF");
    const QString padded = QStringLiteral("a") + rocket + pad + QStringLiteral("b") + rocket + pad;
    const DecodedText decoded = decodeText(padded, 6, true);
    EXPECT_EQ(decoded.text, mixed);
    EXPECT_EQ(decoded.unit, OffsetUnit::utf16);
    EXPECT_EQ(decodeText(padded, 6, false).text, padded);
    EXPECT_EQ(decodeText(padded, 7, true).unit, std::nullopt);
    // One character without padding: then none of it is padding.
    EXPECT_EQ(decodeText(padded + rocket, 7, true).text, padded + rocket);
    EXPECT_EQ(withoutPadding(padded), mixed);
    EXPECT_EQ(withoutPadding(pad + QStringLiteral("a")), pad + QStringLiteral("a"));
}

TEST(TextUnitsTest, OffsetsConvertBothWays) {
    const std::vector<std::pair<qint64, qint64>> pairs = {{0, 0}, {1, 1}, {2, 3}, {3, 4}, {4, 6}};
    for (const auto &[points, units] : pairs) {
        EXPECT_EQ(toUtf16(mixed, points, OffsetUnit::codePoints), units);
        EXPECT_EQ(fromUtf16(mixed, units, OffsetUnit::codePoints), points);
        EXPECT_EQ(toUtf16(mixed, units, OffsetUnit::utf16), units);
    }
}

TEST(TextUnitsTest, HalfAPairIsACharacterOfItsOwn) {
    const QString high(QChar(0xd83d));
    const QString low(QChar(0xde80));
    EXPECT_EQ(codePointCount(high + QStringLiteral("ab")), 3);
    EXPECT_EQ(codePointCount(low + high), 2);
    EXPECT_EQ(codePointCount(high + rocket), 2);
    EXPECT_EQ(codePointCount(rocket), 1);
    EXPECT_EQ(toUtf16(high + QStringLiteral("ab"), 2, OffsetUnit::codePoints), 2);
    EXPECT_EQ(fromUtf16(high + QStringLiteral("ab"), 1, OffsetUnit::utf16), 1);
}

TEST(TextUnitsTest, OffsetsOutsideAndInsideAPairAreRefused) {
    EXPECT_EQ(toUtf16(mixed, 5, OffsetUnit::codePoints), std::nullopt);
    EXPECT_EQ(toUtf16(mixed, 7, OffsetUnit::utf16), std::nullopt);
    EXPECT_EQ(toUtf16(mixed, -1, OffsetUnit::utf16), std::nullopt);
    EXPECT_EQ(fromUtf16(mixed, 2, OffsetUnit::codePoints), std::nullopt);
    EXPECT_EQ(fromUtf16(mixed, 2, OffsetUnit::utf16), std::nullopt);
    EXPECT_EQ(fromUtf16(mixed, 7, OffsetUnit::codePoints), std::nullopt);
    EXPECT_EQ(fromUtf16(mixed, -1, OffsetUnit::codePoints), std::nullopt);
}

/// What Chromium makes of a code-point offset: takes it for a UTF-16 offset, converts again.
std::optional<qint64> misread(const QString &text, qint64 points) {
    return fromUtf16(text, points, OffsetUnit::codePoints);
}

TEST(TextUnitsTest, SelectionReportedRightIsKept) {
    EXPECT_EQ(untangledSelection(QStringLiteral("plain"), {1, 3}, 3), (OffsetPair{1, 3}));
    EXPECT_EQ(untangledSelection(QStringLiteral("plain"), {1, 3}, 1), (OffsetPair{1, 3}));
    EXPECT_EQ(untangledSelection(QStringLiteral("plain"), {1, 3}, 2), std::nullopt);
}

TEST(TextUnitsTest, SelectionConvertedTwiceIsNeverTakenForAnother) {
    const QString text = QStringLiteral("one ") + rocket + rocket + QStringLiteral(" two ") +
                         rocket + QStringLiteral(" three");
    const qint64 count = codePointCount(text);
    int found = 0;
    for (qint64 start = 0; start < count; ++start) {
        for (qint64 end = start + 1; end <= count; ++end) {
            const auto reportedStart = misread(text, start);
            const auto reportedEnd = misread(text, end);
            if (!reportedStart || !reportedEnd)
                continue;
            const OffsetPair reported{*reportedStart, *reportedEnd};
            for (const qint64 caret : {start, end}) {
                const auto untangled = untangledSelection(text, reported, caret);
                if (!untangled)
                    continue;
                ++found;
                EXPECT_EQ(*untangled, (OffsetPair{start, end})) << "caret " << caret;
            }
        }
    }
    EXPECT_GT(found, 50);
}

TEST(TextUnitsTest, SelectionReportedRightIsNeverTakenForAnother) {
    const QString text = QStringLiteral("ab") + rocket + rocket + QStringLiteral("c") + rocket;
    const qint64 count = codePointCount(text);
    for (qint64 start = 0; start < count; ++start) {
        for (qint64 end = start + 1; end <= count; ++end) {
            for (const qint64 caret : {start, end}) {
                const auto untangled = untangledSelection(text, {start, end}, caret);
                EXPECT_EQ(untangled.value_or(OffsetPair{start, end}), (OffsetPair{start, end}));
            }
        }
    }
}

TEST(TextUnitsTest, SelectionMayHideBehindAPairThatCanBeReached) {
    EXPECT_FALSE(mayHideSelection(QStringLiteral("plain")));
    EXPECT_FALSE(mayHideSelection(QString()));
    EXPECT_TRUE(mayHideSelection(rocket));
    EXPECT_TRUE(mayHideSelection(QStringLiteral("ab") + rocket));
}

} // namespace
} // namespace quillmender::atspi
