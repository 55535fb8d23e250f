#include "platform/linux/atspi/WriteJudgement.h"

#include <gmock/gmock.h>

namespace quillmender::atspi {
namespace {

using Standing = WriteJudgement::Standing;

struct JudgedCase {
    const char *shown;
    Standing standing;
    const char *repaired = "";
};

void expectJudged(const char *old, const TextSplice &splice,
                  std::initializer_list<JudgedCase> cases) {
    for (const JudgedCase &each : cases) {
        const WriteJudgement judged =
            judgeWrite(QString::fromUtf8(old), splice, QString::fromUtf8(each.shown));
        EXPECT_EQ(judged.standing, each.standing) << each.shown;
        EXPECT_EQ(judged.repaired, QString::fromUtf8(each.repaired)) << each.shown;
    }
}

TEST(WriteJudgementTest, WordInTheMiddle) {
    const TextSplice splice{4, QStringLiteral("two"), QStringLiteral("zwei")};
    expectJudged("one two three", splice,
                 {{"one two three", Standing::untouched},
                  {"one zwei three", Standing::written},
                  {"one  three", Standing::missing, "one two three"},
                  {"one zw three", Standing::missing, "one two three"},
                  {"one ZWEI three", Standing::missing, "one two three"},
                  {"one zweitwo three", Standing::missing, "one two three"},
                  {"one zwei3 three", Standing::written},
                  {"one 3zwei three", Standing::written},
                  {"one two3 three", Standing::untouched},
                  {"one 333333 three", Standing::missing, "one two333333 three"},
                  {"one zwei3two three", Standing::unknown},
                  {"zero one zwei three", Standing::written},
                  {"one zwei three four", Standing::written},
                  {"one zwei drei", Standing::written},
                  {"1 two 3", Standing::unknown},
                  {"something else", Standing::unknown}});
}

TEST(WriteJudgementTest, WholeFieldThatTheUserTypesInto) {
    const TextSplice splice{0, QStringLiteral("words"), QStringLiteral("Answer")};
    expectJudged("words", splice,
                 {{"Answer", Standing::written},
                  {"Answerxx", Standing::written},
                  {"xxAnswer", Standing::written},
                  {"wordsxx", Standing::untouched},
                  {"", Standing::missing, "words"},
                  {"xx", Standing::missing, "wordsxx"}});
}

TEST(WriteJudgementTest, LineEndsThatTheFieldChanges) {
    const TextSplice splice{4, QStringLiteral("two"), QStringLiteral("zwei\r\nZeilen")};
    expectJudged("one two three", splice,
                 {{"one zwei\nZeilen three", Standing::missing, "one two three"},
                  {"one zwei\nZeilenx three", Standing::written},
                  {"one zwei\r\nZeilen three", Standing::written}});
}

TEST(WriteJudgementTest, Deletion) {
    const TextSplice splice{4, QStringLiteral("two "), QString()};
    expectJudged("one two three", splice,
                 {{"one three", Standing::written},
                  {"one two three", Standing::untouched},
                  {"one xthree", Standing::written},
                  {"one two xthree", Standing::untouched}});
}

TEST(WriteJudgementTest, Insertion) {
    const TextSplice splice{4, QString(), QStringLiteral("zwei ")};
    expectJudged("one two", splice,
                 {{"one zwei two", Standing::written},
                  {"one zwei xtwo", Standing::written},
                  {"one zwtwo", Standing::missing, "one two"}});
}

} // namespace
} // namespace quillmender::atspi
