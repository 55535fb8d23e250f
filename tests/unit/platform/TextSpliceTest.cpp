#include "platform/linux/atspi/TextSplice.h"

#include <gtest/gtest.h>

namespace quillmender::atspi {
namespace {

struct SpliceCase {
    QString from;
    QString to;
    qint64 start;
    QString removed;
    QString inserted;
};

class TextSpliceTest : public testing::TestWithParam<SpliceCase> {};

TEST_P(TextSpliceTest, OnlyTheMiddleChanges) {
    const SpliceCase &given = GetParam();
    const TextSplice splice = computeSplice(given.from, given.to);
    EXPECT_EQ(splice.start, given.start);
    EXPECT_EQ(splice.removed, given.removed);
    EXPECT_EQ(splice.inserted, given.inserted);
    QString applied = given.from;
    applied.replace(splice.start, splice.removed.size(), splice.inserted);
    EXPECT_EQ(applied, given.to);
}

QString text(const char16_t *units) {
    return QString::fromUtf16(units);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TextSpliceTest,
    testing::Values(SpliceCase{text(u"same"), text(u"same"), 4, text(u""), text(u"")},
                    SpliceCase{text(u""), text(u"new"), 0, text(u""), text(u"new")},
                    SpliceCase{text(u"old"), text(u""), 0, text(u"old"), text(u"")},
                    SpliceCase{text(u"one two three"), text(u"one 2 three"), 4, text(u"two"),
                               text(u"2")},
                    SpliceCase{text(u"aa"), text(u"aaa"), 2, text(u""), text(u"a")},
                    SpliceCase{text(u"aaa"), text(u"aa"), 2, text(u"a"), text(u"")},
                    SpliceCase{text(u"abab"), text(u"ab"), 2, text(u"ab"), text(u"")},
                    // The halves of a pair stay together: equal first halves, equal second halves.
                    SpliceCase{text(u"x\U0001F600y"), text(u"x\U0001F601y"), 1, text(u"\U0001F600"),
                               text(u"\U0001F601")},
                    SpliceCase{text(u"x\U0001F600y"), text(u"x\U0001FA00y"), 1, text(u"\U0001F600"),
                               text(u"\U0001FA00")}));

} // namespace
} // namespace quillmender::atspi
