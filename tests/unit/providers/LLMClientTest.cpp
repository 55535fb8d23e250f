#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

class LLMClientTest : public ProviderTest, public testing::WithParamInterface<AIProvider> {};

QByteArray bodyWith(AIProvider provider, const QString &text) {
    switch (provider) {
    case AIProvider::openAI:
        return openAIBody(text);
    case AIProvider::anthropic:
        return anthropicBody(text);
    case AIProvider::gemini:
        return geminiBody(text);
    }
    return {};
}

TEST_P(LLMClientTest, AnEmptyKeyIsReportedAndNothingSent) {
    auto settings = configuration(GetParam());
    settings.apiKey.clear();
    settings.endpoint = QStringLiteral("not even looked at");
    EXPECT_EQ(descriptionOf<AppFailure>([&] { transform(settings); }),
              QStringLiteral("Add your %1 API key in Settings before using Quillmender.")
                  .arg(displayName(GetParam())));
    EXPECT_EQ(server.connectionCount(), 0);
}

TEST_P(LLMClientTest, AnEndpointThatIsNoAddressIsReportedAndNothingSent) {
    for (const auto *endpoint :
         {"", "  ", "v1/responses", "/v1/responses", "http://", "https:///v1", "http:v1",
          "http://[::1", "http://127.0.0.1:99999/", "http://a b/", "://x"}) {
        auto settings = configuration(GetParam());
        settings.endpoint = QString::fromUtf8(endpoint);
        EXPECT_EQ(descriptionOf<AppFailure>([&] { transform(settings); }),
                  QStringLiteral("The OpenAI endpoint URL in Settings is not valid."))
            << endpoint;
    }
    EXPECT_EQ(server.connectionCount(), 0);
}

TEST_P(LLMClientTest, AnAnswerThatDidNotComeOverHttpIsInvalid) {
    for (const auto *endpoint : {"file:///dev/zero", "data:application/json,{}", "qrc:/x"}) {
        auto settings = configuration(GetParam());
        settings.endpoint = QString::fromUtf8(endpoint);
        EXPECT_EQ(failureCaseOf([&] { transform(settings); }), AppFailure::Case::invalidResponse)
            << endpoint;
    }
}

TEST_P(LLMClientTest, TheAnswerIsTrimmed) {
    EXPECT_EQ(answerTo(GetParam(), bodyWith(GetParam(), QStringLiteral("\n  Hello.  \n"))),
              QStringLiteral("Hello."));
}

TEST_P(LLMClientTest, ABlankAnswerIsInvalid) {
    EXPECT_EQ(failureCaseOf([this] {
                  answerTo(GetParam(), bodyWith(GetParam(), QStringLiteral(" \t\n\u00a0\u2028")));
              }),
              AppFailure::Case::invalidResponse);
}

TEST_P(LLMClientTest, EverySuccessfulStatusIsAccepted) {
    for (const auto status : {200, 201, 226, 299}) {
        server.setAnswer(
            ScriptedAnswer::http(status, bodyWith(GetParam(), QStringLiteral("A")), "text/html"));
        EXPECT_EQ(transform(configuration(GetParam())), QStringLiteral("A"));
    }
}

TEST_P(LLMClientTest, AnyNumberOfCallsRunAtOnce) {
    server.setResponder([](const ReceivedRequest &request) {
        const auto text = request.body.contains("first") ? "one" : "two";
        return ScriptedAnswer().hold().send(
            ScriptedAnswer::http(200, bodyWith(GetParam(), QString::fromUtf8(text)))
                .steps()
                .front()
                .bytes);
    });
    auto first = client.transform(QStringLiteral("first"), configuration(GetParam()));
    auto second = client.transform(QStringLiteral("second"), configuration(GetParam()));
    EXPECT_TRUE(waitUntil([this] { return server.requests().size() == 2; }));
    server.release();
    EXPECT_EQ(runTask(std::move(second)), QStringLiteral("two"));
    EXPECT_EQ(runTask(std::move(first)), QStringLiteral("one"));
}

INSTANTIATE_TEST_SUITE_P(EveryProvider, LLMClientTest, testing::ValuesIn(allProviders),
                         [](const auto &parameter) {
                             return rawValue(parameter.param).toStdString();
                         });

} // namespace

} // namespace quillmender::test
