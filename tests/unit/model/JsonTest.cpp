#include "model/Json.h"

#include "model/DecodingError.h"

#include <gtest/gtest.h>

#include <functional>

namespace quillmender {

namespace {

std::string errorOf(const std::function<void()> &action) {
    try {
        action();
    } catch (const DecodingError &error) {
        return error.what();
    }
    return "none";
}

QByteArray nested(int depth) {
    return QByteArray(depth, '[') + QByteArray(depth, ']');
}

TEST(JsonTest, IsWrittenCompactlyInTheOrderOfItsMembers) {
    EXPECT_EQ(encodeJson(Json{{"z", 1}, {"a", jsonText(QStringLiteral("\u00e9/\U0001F600"))}}),
              "{\"z\":1,\"a\":\"\u00e9/\U0001F600\"}");
    EXPECT_EQ(encodeJson(Json("\xff")), "\"\uFFFD\"") << "whatever its texts hold";
}

TEST(JsonTest, IsNestedNoDeeperThanAnythingSensible) {
    EXPECT_NO_THROW(decodeJson(nested(512)));
    EXPECT_NE(errorOf([] { decodeJson(nested(514)); }), "none");
    EXPECT_NE(errorOf([] { decodeJson(nested(100'000)); }), "none");
}

TEST(JsonTest, HoldsNoMoreValuesThanAnythingSensible) {
    EXPECT_NO_THROW(decodeJson('[' + QByteArray("1,").repeated(100'000) + "1]"));
    EXPECT_NE(errorOf([] { decodeJson('[' + QByteArray("1,").repeated(1'000'001) + "1]"); }),
              "none");
}

TEST(JsonTest, AnErrorQuotesNothingOfTheBytes) {
    for (const QByteArray bytes : {"{\"secret", "secret", "[\"secret\",]", "\"secret\xff\""})
        EXPECT_EQ(errorOf([&] { decodeJson(bytes); }),
                  "The data could not be read: it is not valid JSON.");
}

TEST(JsonTest, EachMemberHasItsType) {
    const Json parent = decodeJson(
        R"({"object":{"a":1},"array":[1],"text":"caf\u00e9","empty":"","true":true,"false":false})");
    EXPECT_EQ(member::object(parent, "object").size(), 1U);
    EXPECT_EQ(member::array(parent, "array").size(), 1U);
    EXPECT_EQ(member::text(parent, "text"), QStringLiteral("caf\u00e9"));
    EXPECT_EQ(member::text(parent, "empty"), QString());
    EXPECT_TRUE(member::boolean(parent, "true"));
    EXPECT_FALSE(member::boolean(parent, "false"));
    EXPECT_EQ(member::optionalArray(parent, "array")->size(), 1U);
    EXPECT_EQ(member::optionalText(parent, "text"), QStringLiteral("caf\u00e9"));
    EXPECT_EQ(member::optionalText(parent, "empty"), QString());
}

TEST(JsonTest, AnotherTypeIsAnErrorThatNamesTheMember) {
    const Json parent = decodeJson(R"({"x":1.5})");
    const auto said = [](const char *what) {
        return std::string("The data could not be read: “x” ") + what + '.';
    };
    EXPECT_EQ(errorOf([&] { member::object(parent, "x"); }), said("is not an object"));
    EXPECT_EQ(errorOf([&] { member::array(parent, "x"); }), said("is not a list"));
    EXPECT_EQ(errorOf([&] { member::text(parent, "x"); }), said("is not a text"));
    EXPECT_EQ(errorOf([&] { member::boolean(parent, "x"); }), said("is neither true nor false"));
    EXPECT_EQ(errorOf([&] { member::optionalArray(parent, "x"); }), said("is not a list"));
    EXPECT_EQ(errorOf([&] { member::optionalText(parent, "x"); }), said("is not a text"));
    EXPECT_EQ(errorOf([] { member::text(Json::array(), "x"); }),
              said("was looked for in something that is not an object"));
    EXPECT_EQ(errorOf([] { member::optionalText(Json("x"), "x"); }),
              said("was looked for in something that is not an object"));
}

TEST(JsonTest, NoTypeStandsForAnother) {
    const char *const values[] = {"{}", "[]", R"("text")", "true", "1"};
    for (const char *value : values) {
        const Json parent = decodeJson(QByteArray(R"({"x":)") + value + '}');
        const auto isRead = [&](const std::function<void()> &action) {
            return errorOf(action) == "none";
        };
        const QByteArray kind(value);
        EXPECT_EQ(isRead([&] { member::object(parent, "x"); }), kind == "{}") << value;
        EXPECT_EQ(isRead([&] { member::array(parent, "x"); }), kind == "[]") << value;
        EXPECT_EQ(isRead([&] { member::optionalArray(parent, "x"); }), kind == "[]") << value;
        EXPECT_EQ(isRead([&] { member::text(parent, "x"); }), kind.startsWith('"')) << value;
        EXPECT_EQ(isRead([&] { member::optionalText(parent, "x"); }), kind.startsWith('"'))
            << value;
        EXPECT_EQ(isRead([&] { member::boolean(parent, "x"); }), kind == "true") << value;
    }
}

TEST(JsonTest, NullIsLikeNothing) {
    for (const QByteArray document : {R"({"x":null})", "{}"}) {
        const Json parent = decodeJson(document);
        EXPECT_EQ(member::optionalArray(parent, "x"), nullptr);
        EXPECT_EQ(member::optionalText(parent, "x"), std::nullopt);
        EXPECT_EQ(errorOf([&] { member::text(parent, "x"); }),
                  "The data could not be read: “x” is missing.");
        EXPECT_NE(errorOf([&] { member::object(parent, "x"); }), "none");
        EXPECT_NE(errorOf([&] { member::array(parent, "x"); }), "none");
        EXPECT_NE(errorOf([&] { member::boolean(parent, "x"); }), "none");
    }
}

} // namespace

} // namespace quillmender
