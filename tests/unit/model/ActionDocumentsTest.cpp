#include "model/ActionDocuments.h"

#include "model/DecodingError.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmender {

namespace {

QList<BuiltInActionConfig> reversedStarters() {
    auto actions = starterActions();
    std::ranges::reverse(actions);
    return actions;
}

TEST(ActionDocumentsTest, BuiltInActionsAreOneCompactArray) {
    EXPECT_EQ(encodeBuiltInActions({{TextAction::fixGrammar, QStringLiteral("Fix \"it\""),
                                     QStringLiteral("a/b\n\u00e9{{text}}"), true}}),
              "[{\"action\":\"fixGrammar\",\"title\":\"Fix \\\"it\\\"\",\"promptTemplate\":"
              "\"a/b\\n\u00e9{{text}}\",\"isHidden\":true}]");
    EXPECT_EQ(encodeBuiltInActions({}), "[]");
    EXPECT_EQ(decodeBuiltInActions(encodeBuiltInActions(reversedStarters())), reversedStarters());
}

TEST(ActionDocumentsTest, CustomActionsAreOneCompactArray) {
    const QList<CustomAction> actions{{QUuid::fromString(u"{0c1d2e3f-aaaa-bbbb-cccc-0123456789ab}"),
                                       QStringLiteral("T"), QStringLiteral("P")}};
    EXPECT_EQ(
        encodeCustomActions(actions),
        R"([{"id":"0C1D2E3F-AAAA-BBBB-CCCC-0123456789AB","title":"T","promptTemplate":"P"}])");
    EXPECT_EQ(decodeCustomActions(encodeCustomActions(actions)), actions);
}

TEST(ActionDocumentsTest, ReadersDependNeitherOnOrderNorOnEscapes) {
    const auto actions =
        decodeCustomActions(R"( [ {"promptTemplate":"a\/b","extra":[1],"title":"\u00e9",)"
                            R"("id":"0c1d2e3f-aaaa-bbbb-cccc-0123456789ab"} ] )");
    ASSERT_EQ(actions.size(), 1);
    EXPECT_EQ(actions.front().promptTemplate, QStringLiteral("a/b"));
    EXPECT_EQ(actions.front().title, QStringLiteral("\u00e9"));
}

TEST(ActionDocumentsTest, OneBadCustomActionMakesTheDocumentUnreadable) {
    const QByteArray id = R"("id":"0C1D2E3F-AAAA-BBBB-CCCC-0123456789AB")";
    const QByteArray good = '{' + id + R"(,"title":"T","promptTemplate":"P"})";
    ASSERT_EQ(loadedCustomActions('[' + good + ']').size(), 1);
    for (const QByteArray bad :
         {R"({"title":"T","promptTemplate":"P"})", R"({ID,"promptTemplate":"P"})",
          R"({ID,"title":"T"})", R"({ID,"title":1,"promptTemplate":"P"})",
          R"({ID,"title":"T","promptTemplate":null})",
          R"({"id":7,"title":"T","promptTemplate":"P"})", "null", "[]"}) {
        const QByteArray document = '[' + good + ',' + QByteArray(bad).replace("ID", id) + ']';
        EXPECT_THROW(decodeCustomActions(document), DecodingError) << bad.constData();
        EXPECT_TRUE(loadedCustomActions(document).isEmpty()) << bad.constData();
    }
    EXPECT_THROW(decodeCustomActions(good), DecodingError);
}

TEST(ActionDocumentsTest, TheStoredEntryCountsWithEachOfItsTexts) {
    const BuiltInActionConfig stored{TextAction::simplify, QStringLiteral(" T "),
                                     QStringLiteral(" P\n"), true};
    EXPECT_EQ(loadedBuiltInActions(encodeBuiltInActions({stored})).at(1), stored);
    EXPECT_EQ(loadedBuiltInActions(encodeBuiltInActions({stored})).size(), 7);
    const BuiltInActionConfig empty{TextAction::simplify, QString(), QString(), false};
    EXPECT_EQ(loadedBuiltInActions(encodeBuiltInActions({empty})).at(1), empty);
}

TEST(ActionDocumentsTest, HalfASurrogatePairDoesNotSpoilTheDocument) {
    const auto document = encodeCustomActions({{QUuid(), QString(QChar(0xd83d)), QString()}});
    EXPECT_EQ(decodeCustomActions(document).front().title, QString(QChar(0xfffd)));
}

TEST(ActionDocumentsTest, OneBadEntryMakesTheDocumentUnreadable) {
    const QByteArray good =
        R"({"action":"casual","title":"T","promptTemplate":"P","isHidden":false})";
    EXPECT_NO_THROW(decodeBuiltInActions('[' + good + ']'));
    for (const QByteArray bad :
         {R"({"title":"T","promptTemplate":"P","isHidden":false})",
          R"({"action":"casual","promptTemplate":"P","isHidden":false})",
          R"({"action":"casual","title":"T","isHidden":false})",
          R"({"action":"casual","title":"T","promptTemplate":"P"})",
          R"({"action":"casual","title":null,"promptTemplate":"P","isHidden":false})",
          R"({"action":"casual","title":"T","promptTemplate":"P","isHidden":0})",
          R"({"action":"Casual","title":"T","promptTemplate":"P","isHidden":false})",
          R"({"action":"unknown","title":"T","promptTemplate":"P","isHidden":false})", "1", "[]"}) {
        EXPECT_THROW(decodeBuiltInActions('[' + good + ',' + bad + ']'), DecodingError)
            << bad.constData();
        EXPECT_EQ(loadedBuiltInActions('[' + good + ',' + bad + ']'), starterActions())
            << bad.constData();
    }
    EXPECT_THROW(decodeBuiltInActions(good), DecodingError);
}

TEST(ActionDocumentsTest, AnIdentifierHasItsOneForm) {
    for (const QByteArray id :
         {"", "x", "{0C1D2E3F-AAAA-BBBB-CCCC-0123456789AB}", "0C1D2E3FAAAABBBBCCCC0123456789AB",
          "0C1D2E3F-AAAA-BBBB-CCCC-0123456789AG", "0C1D2E3F-AAAA-BBBB-CCCC-0123456789AB0",
          " 0C1D2E3F-AAAA-BBBB-CCCC-0123456789AB"}) {
        const auto document = R"([{"id":")" + id + R"(","title":"","promptTemplate":""}])";
        EXPECT_THROW(decodeCustomActions(document), DecodingError) << id.constData();
        EXPECT_TRUE(loadedCustomActions(document).isEmpty());
    }
}

TEST(ActionDocumentsTest, NothingStoredOrNothingReadableGivesTheStarters) {
    EXPECT_EQ(loadedBuiltInActions(std::nullopt), starterActions());
    EXPECT_TRUE(loadedCustomActions(std::nullopt).isEmpty());
    for (const QByteArray bad : {"", "{}", "null", "not json", "[", "\xff"}) {
        EXPECT_EQ(loadedBuiltInActions(bad), starterActions());
        EXPECT_TRUE(loadedCustomActions(bad).isEmpty());
    }
    EXPECT_EQ(loadedBuiltInActions(QByteArray(100'000, '[')), starterActions());
}

TEST(ActionDocumentsTest, TheLoadedListHasEveryBuiltInInItsOrder) {
    EXPECT_EQ(loadedBuiltInActions(encodeBuiltInActions(reversedStarters())), starterActions());
    EXPECT_EQ(loadedBuiltInActions("[]"), starterActions());

    auto expected = starterActions();
    expected.back() = {TextAction::fixGrammar, QStringLiteral("F"), QStringLiteral("P"), true};
    EXPECT_EQ(loadedBuiltInActions(encodeBuiltInActions({expected.back()})), expected);
}

TEST(ActionDocumentsTest, TheFirstOfTwoEntriesCounts) {
    const BuiltInActionConfig first{TextAction::casual, QStringLiteral("1"), QString(), true};
    const BuiltInActionConfig second{TextAction::casual, QStringLiteral("2"), QString(), false};
    EXPECT_EQ(reconciledBuiltInActions({first, second}).at(2), first);
}

TEST(ActionDocumentsTest, CustomActionsKeepTheirOrder) {
    const QList<CustomAction> actions{{QUuid::createUuid(), QStringLiteral("b"), QString()},
                                      {QUuid::createUuid(), QStringLiteral("a"), QString()}};
    EXPECT_EQ(loadedCustomActions(encodeCustomActions(actions)), actions);
}

} // namespace

} // namespace quillmender
