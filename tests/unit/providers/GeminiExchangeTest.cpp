#include "model/DecodingError.h"
#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

class GeminiExchangeTest : public ProviderTest {
  protected:
    QString answerTo(const QByteArray &body) {
        return ProviderTest::answerTo(AIProvider::gemini, body);
    }

    /// The path and query on the wire.
    QByteArray targetFor(const QString &endpointPath, const QString &model) {
        server.setAnswer(ScriptedAnswer::http(200, geminiBody(QStringLiteral("ok"))));
        auto settings = configuration(AIProvider::gemini);
        settings.endpoint = server.baseUrl() + endpointPath;
        settings.model = model;
        transform(settings);
        return server.requests().back().target;
    }
};

TEST_F(GeminiExchangeTest, TheModelIsAppendedAfterExactlyOneSlash) {
    const QByteArray expected = "/v1beta/models/gemini-2.5-flash:generateContent";
    const auto model = QStringLiteral("gemini-2.5-flash");
    EXPECT_EQ(targetFor(QStringLiteral("/v1beta/models"), model), expected);
    EXPECT_EQ(targetFor(QStringLiteral("/v1beta/models/"), model), expected);
    EXPECT_EQ(targetFor(QString(), model), "/gemini-2.5-flash:generateContent");
    EXPECT_EQ(targetFor(QStringLiteral("/"), model), "/gemini-2.5-flash:generateContent");
}

TEST_F(GeminiExchangeTest, AQueryStaysBehindThePath) {
    EXPECT_EQ(targetFor(QStringLiteral("/models?alt=json&x=a%2Fb"), QStringLiteral("m")),
              "/models/m:generateContent?alt=json&x=a%2Fb");
}

TEST_F(GeminiExchangeTest, CharactersThatAPathCannotHoldAreEncoded) {
    const std::vector<std::pair<QString, QByteArray>> cases{
        {QStringLiteral("a b"), "a%20b"},
        {QStringLiteral("100%"), "100%25"},
        {QStringLiteral("a%20b"), "a%2520b"},
        {QStringLiteral("a?b#c"), "a%3Fb%23c"},
        {QStringLiteral("mod\u00e8le-\U0001F600"), "mod%C3%A8le-%F0%9F%98%80"},
        {QStringLiteral("a\"<>[]\\^`{|}"), "a%22%3C%3E%5B%5D%5C%5E%60%7B%7C%7D"},
        {QStringLiteral("a-._~!$&'()*+,;=:@"), "a-._~!$&'()*+,;=:@"},
    };
    for (const auto &[model, expected] : cases)
        EXPECT_EQ(targetFor(QStringLiteral("/models"), model),
                  "/models/" + expected + ":generateContent");
}

TEST_F(GeminiExchangeTest, ASlashInTheModelSeparates) {
    EXPECT_EQ(targetFor(QStringLiteral("/v1"), QStringLiteral("tuned/x")),
              "/v1/tuned/x:generateContent");
    EXPECT_EQ(targetFor(QStringLiteral("/v1/"), QStringLiteral("/x")), "/v1/x:generateContent");
}

TEST_F(GeminiExchangeTest, EncodedCharactersOfTheEndpointAreKept) {
    EXPECT_EQ(targetFor(QStringLiteral("/a%2Fb%20c/models"), QStringLiteral("m")),
              "/a%2Fb%20c/models/m:generateContent");
}

TEST_F(GeminiExchangeTest, AnEmptyModelIsSentAndTheProvidersErrorReported) {
    server.setAnswer(ScriptedAnswer::http(404, errorBody(QStringLiteral("no model"))));
    auto settings = configuration(AIProvider::gemini);
    settings.model.clear();
    EXPECT_EQ(descriptionOf<AppFailure>([&] { transform(settings); }), QStringLiteral("no model"));
    EXPECT_EQ(onlyRequest().target, "/v1beta/models/:generateContent");
}

TEST_F(GeminiExchangeTest, AllPartsOfAllCandidatesAreJoined) {
    EXPECT_EQ(answerTo(R"({"candidates":[{"content":{"parts":[{"text":" Bon"},{"text":"jour"}]}},)"
                       R"({"content":{"parts":[]}},{"content":{"parts":[{"text":" !\n"}]}}],)"
                       R"("usageMetadata":{}})"),
              QStringLiteral("Bonjour !"));
}

TEST_F(GeminiExchangeTest, AnAnswerWithoutTextIsInvalid) {
    for (const auto *body : {"{}", R"({"candidates":null})", R"({"candidates":[]})",
                             R"({"candidates":[{"content":{"parts":[{"text":"  "}]}}]})"}) {
        EXPECT_EQ(descriptionOf<AppFailure>([&] { answerTo(body); }),
                  QStringLiteral("OpenAI returned a response Quillmender could not parse."))
            << body;
    }
}

TEST_F(GeminiExchangeTest, AWrongShapeIsADecodingError) {
    for (const auto *body :
         {R"({"candidates":[{}]})", R"({"candidates":[{"content":null}]})",
          R"({"candidates":[{"content":{}}]})", R"({"candidates":[{"content":{"parts":[{}]}}]})",
          R"({"candidates":[{"content":{"parts":[{"text":null}]}}]})", R"({"candidates":{}})",
          R"({"candidates":[{"content":{"parts":[{"text":"A"},{"inlineData":{}}]}}]})"}) {
        EXPECT_NE(descriptionOf<DecodingError>([&] { answerTo(body); }), QString()) << body;
    }
}

} // namespace

} // namespace quillmender::test
