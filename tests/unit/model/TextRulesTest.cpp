#include "model/TextRules.h"

#include <gtest/gtest.h>

namespace quillmender {

namespace {

TEST(TextRulesTest, TrimsUnicodeWhiteSpaceAtBothEndsOnly) {
    EXPECT_EQ(trimmed(QStringLiteral(" \t\r\n\v\f\u0085\u00a0\u2003\u2028\u2029\u3000a b\n ")),
              QStringLiteral("a b"));
    EXPECT_EQ(trimmed(QStringLiteral("a\n\nb")), QStringLiteral("a\n\nb"));
    EXPECT_EQ(trimmed(QString()), QString());
    EXPECT_EQ(trimmed(QStringLiteral(" \n ")), QString());
    EXPECT_EQ(trimmed(QStringLiteral(" \U0001F600 ")), QStringLiteral("\U0001F600"));
}

TEST(TextRulesTest, EachKindOfWhiteSpaceIsTrimmedAtEachEnd) {
    for (const char16_t space : u"\t\n\v\f\r \u0085\u00a0\u1680\u2000\u2003\u200a\u2028\u2029"
                                u"\u202f\u205f\u3000") {
        if (space == 0)
            continue;
        const QChar unit(space);
        EXPECT_EQ(trimmed(unit + QStringLiteral("a b")), QStringLiteral("a b")) << int(space);
        EXPECT_EQ(trimmed(QStringLiteral("a b") + unit), QStringLiteral("a b")) << int(space);
        EXPECT_EQ(trimmed(QString(3, unit)), QString()) << int(space);
        EXPECT_EQ(trimmed(u'a' + QString(unit) + u'b'), u'a' + QString(unit) + u'b') << int(space);
    }
}

TEST(TextRulesTest, NothingElseIsTrimmed) {
    for (const char16_t kept :
         {u'\0', u'\b', u'\x1f', u'.', u'\x7f', u'\u00ad', u'\u0301', u'\u200d'}) {
        const QString text = QChar(kept) + QStringLiteral("a") + QChar(kept);
        EXPECT_EQ(trimmed(text), text) << int(kept);
    }
}

TEST(TextRulesTest, Utf8IsAlwaysValid) {
    const auto text = QStringLiteral("a\u00e9\U0001F600");
    EXPECT_EQ(toValidUtf8(text), text.toUtf8());
    EXPECT_EQ(toValidUtf8(QString(QChar(0xd83d))), QByteArray("\xEF\xBF\xBD"));
    EXPECT_EQ(toValidUtf8(QChar(0xde00) + text + QChar(0xd83d)),
              "\xEF\xBF\xBD" + text.toUtf8() + "\xEF\xBF\xBD");
    EXPECT_EQ(toValidUtf8(QChar(0xd83d) + text).right(text.toUtf8().size()), text.toUtf8());
}

} // namespace

} // namespace quillmender
