#include "platform/linux/terminal/TerminalText.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

struct Case {
    QString given;
    QString made;
    bool hasSeveralLines;
};

class TerminalTextTest : public testing::TestWithParam<Case> {};

TEST_P(TerminalTextTest, PressesNoKey) {
    const TerminalText made = makeTerminalText(GetParam().given);
    EXPECT_EQ(made.text, GetParam().made);
    EXPECT_EQ(made.hasSeveralLines, GetParam().hasSeveralLines);
}

QString text(const char16_t *units) {
    return QString::fromUtf16(units);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TerminalTextTest,
    testing::Values(
        Case{text(u""), text(u""), false}, Case{text(u"\n"), text(u""), false},
        Case{text(u" \u00fc\u4f1a\U0001F600\t."), text(u" \u00fc\u4f1a\U0001F600\t."), false},
        Case{text(u"rm -r /\n"), text(u"rm -r /"), false},
        Case{text(u"end\r\n\r\n"), text(u"end"), false}, Case{text(u"end\r"), text(u"end"), false},
        Case{text(u"end\u2029\u2028\u0085"), text(u"end"), false},
        Case{text(u"end\n\u001b\n\u0003"), text(u"end"), false},
        Case{text(u"one\ntwo"), text(u"one\ntwo"), true},
        Case{text(u"one\r\ntwo\rthree\n\rfour"), text(u"one\ntwo\nthree\n\nfour"), true},
        Case{text(u"one\u0085two"), text(u"one\ntwo"), true},
        Case{text(u"one\u2028two"), text(u"one\u2028two"), true},
        Case{text(u"one\u2029two"), text(u"one\u2029two"), true},
        Case{text(u"\none"), text(u"\none"), true},
        Case{text(u"a\u001b[201~b"), text(u"a[201~b"), false},
        Case{text(u"a\u009b201~b\u009d0;c\u009c"), text(u"a201~b0;c"), false},
        Case{text(u"\u0003a\u0004b\u0008c\u000bd\u000ce\u000ff\u0015g\u0016h\u001ai\u007fj"),
             text(u"abcdefghij"), false},
        Case{text(u"a\r\u001b\nb"), text(u"a\n\nb"), true}));

TEST(TerminalTextTest, KeepsNothingButTextOfAllControlCharacters) {
    for (char16_t sign = 0; sign < 0xa0; ++sign) {
        const bool isControl = sign < 0x20 || sign >= 0x7f;
        const bool isLineEnd = sign == u'\n' || sign == u'\r' || sign == 0x85;
        const QString made = makeTerminalText(u'a' + QString(QChar(sign)) + u'b').text;
        EXPECT_EQ(made.size(), isControl && !isLineEnd && sign != u'\t' ? 2 : 3) << int(sign);
    }
}

TEST(TerminalTextTest, KnowsTabs) {
    EXPECT_TRUE(makeTerminalText(text(u"one\ttwo")).hasTabs);
    EXPECT_TRUE(makeTerminalText(text(u"one\n\ttwo")).hasTabs);
    EXPECT_FALSE(makeTerminalText(text(u"one two\n")).hasTabs);
}

TEST(TerminalTextTest, HasASpaceForALineEndAndForATabOnOneLine) {
    EXPECT_EQ(onOneLine(text(u"one\ntwo\u2028three\u2029four\tfive\n\tsix")),
              QStringLiteral("one two three four five  six"));
}

} // namespace
} // namespace quillmender
