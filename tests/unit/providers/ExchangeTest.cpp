#include "fakes/FakeTransport.h"
#include "unit/providers/ProviderTest.h"

#include <QJsonDocument>
#include <QJsonValue>

namespace quillmender::test {

namespace {

/// The exchange with a provider without any network: what is handed over for sending, and what is
/// made of an answer.
class ExchangeTest : public testing::TestWithParam<AIProvider> {
  protected:
    LLMConfiguration configuration() const {
        return {GetParam(), testKey, QStringLiteral("m"), QStringLiteral("https://host/path")};
    }

    /// What is sent when `task` runs; the task ends without an answer.
    HttpRequest sentBy(QCoro::Task<QString> task) {
        EXPECT_EQ(transport.requests.size(), 1);
        const HttpRequest request = transport.requests.takeFirst();
        transport.fail(QStringLiteral("enough"));
        EXPECT_EQ(descriptionOf<fakes::FakeTransportError>([&] { runTask(std::move(task)); }),
                  QStringLiteral("enough"));
        return request;
    }
    HttpRequest sentFor(const LLMConfiguration &configuration,
                        const QString &prompt = QStringLiteral("p")) {
        return sentBy(client.transform(prompt, configuration));
    }

    QString answerTo(std::optional<int> status, const QByteArray &body) {
        auto task = client.transform(QStringLiteral("p"), configuration());
        transport.answer(status, body);
        return runTask(std::move(task));
    }

    static QByteArray bodyWith(const QString &text) {
        switch (GetParam()) {
        case AIProvider::openAI:
            return openAIBody(text);
        case AIProvider::anthropic:
            return anthropicBody(text);
        case AIProvider::gemini:
            return geminiBody(text);
        }
        return {};
    }

    /// The prompt in the body of a request.
    static QString promptIn(const HttpRequest &request) {
        const auto body = QJsonDocument::fromJson(request.body);
        switch (GetParam()) {
        case AIProvider::openAI:
            return body[u"input"][1][u"content"][0][u"text"].toString();
        case AIProvider::anthropic:
            return body[u"messages"][0][u"content"].toString();
        case AIProvider::gemini:
            return body[u"contents"][0][u"parts"][0][u"text"].toString();
        }
        return {};
    }

    fakes::FakeTransport transport{fakes::makeCallLog()};
    LLMClient client{transport};
};

TEST_P(ExchangeTest, IsOnePostWithTwoMinutesAndTheProvidersHeaders) {
    const auto request = sentFor(configuration());
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.timeout, std::chrono::seconds(120));
    EXPECT_EQ(request.redirects, HttpRequest::Redirects::none);
    QByteArrayList headers;
    for (const auto &[name, value] : request.headers)
        headers.append(name + ": " + value);
    const QList<QByteArrayList> expected{
        {"Content-Type: application/json", "Authorization: Bearer sk-test-9f8e7d"},
        {"Content-Type: application/json", "x-api-key: sk-test-9f8e7d",
         "anthropic-version: 2023-06-01"},
        {"Content-Type: application/json", "x-goog-api-key: sk-test-9f8e7d"}};
    EXPECT_EQ(headers, expected.at(static_cast<int>(GetParam())));
}

TEST_P(ExchangeTest, TheKeyIsSentAsItIs) {
    auto settings = configuration();
    settings.apiKey = QStringLiteral(" k e\ty ");
    const auto request = sentFor(settings);
    const QByteArray value = request.headers.at(1).second;
    EXPECT_EQ(value, GetParam() == AIProvider::openAI ? "Bearer  k e\ty " : " k e\ty ");
    EXPECT_FALSE(request.url.toString().contains(QStringLiteral("k e")));
    EXPECT_FALSE(request.body.contains("k e"));
}

TEST_P(ExchangeTest, OnlyAnEmptyKeyIsMissing) {
    auto settings = configuration();
    settings.apiKey = QStringLiteral("  ");
    EXPECT_TRUE(sentFor(settings).headers.at(1).second.endsWith("  "));
    settings.apiKey.clear();
    EXPECT_EQ(failureCaseOf([&] { runTask(client.transform(QStringLiteral("p"), settings)); }),
              AppFailure::Case::missingAPIKey);
    EXPECT_TRUE(transport.requests.isEmpty());
}

TEST_P(ExchangeTest, ThePromptAndTheModelAreSentAsTheyAre) {
    auto settings = configuration();
    settings.model = QStringLiteral(" m 1 ");
    const auto request = sentFor(settings, QStringLiteral("\n\t p \u00a0\n"));
    EXPECT_EQ(promptIn(request), QStringLiteral("\n\t p \u00a0\n"));
    const QByteArray model =
        GetParam() == AIProvider::gemini ? request.url.toEncoded() : request.body;
    EXPECT_TRUE(model.contains(GetParam() == AIProvider::gemini ? "%20m%201%20:" : "\" m 1 \""))
        << model.toStdString();
}

TEST_P(ExchangeTest, GenerateChangesNeitherTheInstructionNorTheSource) {
    const auto request =
        sentBy(client.generate(QStringLiteral(" \n meeting  notes \n\t"),
                               QStringLiteral("\n write\n an email  \n"), configuration()));
    EXPECT_EQ(promptIn(request).toStdString(),
              "Use the source text below as raw notes, context, or a rough request.\n"
              "Follow the instruction to generate the final text the user wants.\n"
              "If the instruction does not specify a target language, preserve the language "
              "implied by the source text.\n"
              "Return only the final generated text.\n\nInstruction:\n"
              "\n write\n an email  \n"
              "\n\nSource text:\n"
              " \n meeting  notes \n\t");
}

TEST_P(ExchangeTest, GenerateSendsTextsThatLookLikeItsOwn) {
    const QString instruction = QStringLiteral("\n\nSource text:\n{{text}}%1");
    const QString source = QStringLiteral("Instruction:\n%1 {{text}}");
    const auto prompt = promptIn(sentBy(client.generate(source, instruction, configuration())));
    EXPECT_TRUE(prompt.endsWith(QStringLiteral("\n\nInstruction:\n") + instruction +
                                QStringLiteral("\n\nSource text:\n") + source));
    EXPECT_TRUE(promptIn(sentBy(client.generate(QString(), QString(), configuration())))
                    .endsWith(QStringLiteral("\n\nInstruction:\n\n\nSource text:\n")));
}

TEST_P(ExchangeTest, OnlyAStatusFrom200To299IsASuccess) {
    const QByteArray good = bodyWith(QStringLiteral("A"));
    for (const int status : {200, 201, 204, 250, 299})
        EXPECT_EQ(answerTo(status, good), QStringLiteral("A")) << status;
    for (const int status : {-1,  0,   1,   20,  99,  100, 101, 102, 103, 104,  110,
                             199, 300, 301, 304, 400, 401, 408, 500, 599, 1000, 2000})
        EXPECT_EQ(failureCaseOf([&] { answerTo(status, good); }), AppFailure::Case::openAIError)
            << status;
    EXPECT_EQ(failureCaseOf([&] { answerTo(std::nullopt, good); }),
              AppFailure::Case::invalidResponse);
}

TEST_P(ExchangeTest, AnErrorThatReadsLikeAnAnswerIsAnError) {
    EXPECT_EQ(failureCaseOf([&] { answerTo(500, bodyWith(QStringLiteral("A"))); }),
              AppFailure::Case::openAIError);
    EXPECT_EQ(answerTo(200, QByteArray(bodyWith(QStringLiteral("A")))
                                .replace(0, 1, R"({"error":{"message":"no"},)")),
              QStringLiteral("A"))
        << "and an answer with an error in it is an answer";
}

TEST_P(ExchangeTest, TheAnswerIsTrimmedAtItsEndsOnly) {
    EXPECT_EQ(answerTo(200, bodyWith(QStringLiteral(" \u00a0\t\r\n a  b\n\nc \u2028\u3000\n"))),
              QStringLiteral("a  b\n\nc"));
}

TEST_P(ExchangeTest, WhatIsWrongWithTheWayIsToldAsItIs) {
    auto task = client.transform(QStringLiteral("p"), configuration());
    transport.fail(QStringLiteral(" offline "));
    EXPECT_EQ(descriptionOf<fakes::FakeTransportError>([&] { runTask(std::move(task)); }),
              QStringLiteral(" offline "));
    EXPECT_EQ(transport.requests.size(), 1) << "nothing is sent a second time";
}

INSTANTIATE_TEST_SUITE_P(EveryProvider, ExchangeTest, testing::ValuesIn(allProviders),
                         [](const auto &parameter) {
                             return rawValue(parameter.param).toStdString();
                         });

} // namespace

} // namespace quillmender::test
