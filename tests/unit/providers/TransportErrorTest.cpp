#include "providers/TransportError.h"

#include "model/UserMessage.h"
#include "platform/Clock.h"
#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

class TransportErrorTest : public ProviderTest {
  protected:
    TransportError::Kind kindFor(const LLMConfiguration &settings) {
        try {
            transform(settings);
        } catch (const TransportError &error) {
            EXPECT_FALSE(error.errorDescription().contains(testKey));
            EXPECT_FALSE(error.errorDescription().contains(QStringLiteral("secret")));
            EXPECT_EQ(userMessage(std::current_exception()), error.errorDescription());
            return error.kind();
        }
        throw std::logic_error("no error");
    }

    LLMConfiguration configurationFor(const QString &endpoint) const {
        auto settings = configuration(AIProvider::openAI);
        settings.endpoint = endpoint;
        return settings;
    }
};

TEST_F(TransportErrorTest, ARefusedConnectionIsReported) {
    QString gone;
    {
        const LoopbackServer closed;
        gone = closed.baseUrl();
    }
    EXPECT_EQ(kindFor(configurationFor(gone + QStringLiteral("/?key=secret"))),
              TransportError::Kind::connectionFailed);
}

TEST_F(TransportErrorTest, OtherSchemesAreReported) {
    for (const auto *endpoint : {"ftp://127.0.0.1/x", "localhost:8080/v1", "mailto:a@b", "ws://h"})
        EXPECT_EQ(kindFor(configurationFor(QString::fromUtf8(endpoint))),
                  TransportError::Kind::unsupportedScheme);
}

TEST_F(TransportErrorTest, AnAnswerThatIsNotHttpIsReported) {
    server.setAnswer(ScriptedAnswer().send("SSH-2.0-OpenSSH_9.2\r\n").close());
    const auto kind = kindFor(configuration(AIProvider::openAI));
    EXPECT_TRUE(kind == TransportError::Kind::notHttp ||
                kind == TransportError::Kind::connectionLost);
}

TEST_F(TransportErrorTest, PlainHttpOnASecureAddressIsReported) {
    server.setAnswer(ScriptedAnswer::http(200, "{}"));
    auto endpoint = server.baseUrl().replace(QStringLiteral("http:"), QStringLiteral("https:"));
    QtHttpTransport impatient(std::chrono::milliseconds(500));
    client = LLMClient(impatient);
    EXPECT_TRUE(kindFor(configurationFor(endpoint)) != TransportError::Kind::notHttp);
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(TransportErrorTest, AnAddressWithCredentialsSendsNone) {
    server.setAnswer(
        ScriptedAnswer::http(401, "denied", "text/plain", {"WWW-Authenticate: Basic realm=\"x\""}));
    auto settings = configuration(AIProvider::anthropic);
    settings.endpoint.replace(QStringLiteral("http://"), QStringLiteral("http://me:secret@"));
    EXPECT_EQ(descriptionOf<AppFailure>([&] { transform(settings); }), QStringLiteral("denied"));
    EXPECT_EQ(onlyRequest().header("authorization"), std::nullopt);
}

TEST_F(TransportErrorTest, AKeyWithALineBreakIsNotSent) {
    for (const auto *key : {"a\r\nX-Evil: 1", "a\nb", "a\x01", "a\x7f"}) {
        auto settings = configuration(AIProvider::gemini);
        settings.apiKey = QString::fromUtf8(key);
        EXPECT_EQ(descriptionOf<TransportError>([&] { transform(settings); }),
                  QStringLiteral("The API key holds a character that cannot be sent."));
    }
    EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(TransportErrorTest, AServerThatNeverAnswersTimesOut) {
    QtHttpTransport impatient(std::chrono::milliseconds(200));
    client = LLMClient(impatient);
    server.setAnswer(ScriptedAnswer().hold());
    EXPECT_EQ(kindFor(configuration(AIProvider::openAI)), TransportError::Kind::timedOut);
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(TransportErrorTest, AServerThatDripsTimesOut) {
    QtHttpTransport impatient(std::chrono::milliseconds(300));
    client = LLMClient(impatient);
    auto answer = ScriptedAnswer().send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
    for (int drop = 0; drop < 1000; ++drop)
        answer.send(" ").pause(std::chrono::milliseconds(50));
    server.setAnswer(answer);
    EXPECT_EQ(kindFor(configuration(AIProvider::openAI)), TransportError::Kind::timedOut);
}

TEST_F(TransportErrorTest, TheWholeRequestHas120Seconds) {
    struct RecordingTransport : HttpTransport {
        std::chrono::milliseconds timeout{};
        QCoro::Task<HttpResponse> send(HttpRequest request) override {
            timeout = request.timeout;
            co_return HttpResponse{200, anthropicBody(QStringLiteral("A"))};
        }
        void cancelAll() override {}
    } recorder;
    client = LLMClient(recorder);
    transform(configuration(AIProvider::anthropic));
    EXPECT_EQ(recorder.timeout, std::chrono::seconds(120));
}

TEST_F(TransportErrorTest, ACancelledRequestEndsWithItsError) {
    server.setAnswer(ScriptedAnswer().hold());
    auto task = client.transform(QStringLiteral("x"), configuration(AIProvider::openAI));
    EXPECT_TRUE(waitUntil([this] { return !server.requests().empty(); }));
    transport.cancelAll();
    EXPECT_THROW(runTask(std::move(task)), CancellationError);
}

TEST_F(TransportErrorTest, ATransportThatGoesAwayCancelsItsRequests) {
    server.setAnswer(ScriptedAnswer().hold());
    auto shortLived = std::make_unique<QtHttpTransport>();
    const LLMClient other(*shortLived);
    auto task = other.transform(QStringLiteral("x"), configuration(AIProvider::openAI));
    EXPECT_TRUE(waitUntil([this] { return !server.requests().empty(); }));
    shortLived.reset();
    EXPECT_THROW(runTask(std::move(task)), CancellationError);
}

} // namespace

} // namespace quillmender::test
