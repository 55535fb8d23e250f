#include "providers/TransportError.h"
#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

/// A request that has reached a provider costs money and must not be repeated behind the user's
/// back, however the connection behaves.
class OneRequestTest : public ProviderTest {
  protected:
    /// The connection ends with this answer's last step: the one request fails and stays the one.
    void expectLostWithout(const ScriptedAnswer &answer) {
        const auto before = server.requests().size();
        server.setAnswer(answer);
        EXPECT_EQ(
            descriptionOf<TransportError>([this] { transform(configuration(AIProvider::openAI)); }),
            QStringLiteral("The connection to 127.0.0.1:%1 was lost before the answer was "
                           "complete.")
                .arg(server.port()));
        EXPECT_EQ(server.requests().size(), before + 1);
    }
};

TEST_F(OneRequestTest, NothingIsSentAgainOnANewConnection) {
    expectLostWithout(ScriptedAnswer().close());
    expectLostWithout(ScriptedAnswer().reset());
    expectLostWithout(ScriptedAnswer().send("HTT").close());
    expectLostWithout(ScriptedAnswer().send("HTTP/1.1 200 OK\r\nContent-Len").close());
    expectLostWithout(ScriptedAnswer().send("HTTP/1.1 200 OK\r\nContent-Len").reset());
    EXPECT_EQ(server.connectionCount(), 5);
}

TEST_F(OneRequestTest, ABodyCutShortIsLost) {
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"output_text\":\"A\"}";
    const QByteArray chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                               "13\r\n{\"output_text\":\"A\"}\r\n";
    expectLostWithout(ScriptedAnswer().send(head).close());
    expectLostWithout(ScriptedAnswer().send(head).reset());
    expectLostWithout(ScriptedAnswer().send(chunked).close());
    expectLostWithout(ScriptedAnswer().send(chunked).reset());
}

TEST_F(OneRequestTest, EachRequestHasAConnectionOfItsOwn) {
    for (int time = 0; time < 3; ++time)
        answerTo(AIProvider::openAI, openAIBody(QStringLiteral("ok")));
    EXPECT_EQ(server.requests().size(), 3U);
    EXPECT_EQ(server.connectionCount(), 3);
}

TEST_F(OneRequestTest, AnAnswerThatEndsWithTheConnectionIsWhole) {
    const auto body = openAIBody(QString(100'000, u'x'));
    for (const QByteArray head :
         {"HTTP/1.1 200 OK\r\n\r\n", "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n",
          "HTTP/1.0 200 OK\r\nContent-Type: application/json\r\n\r\n"}) {
        server.setAnswer(ScriptedAnswer().send(head + body).close());
        EXPECT_EQ(transform(configuration(AIProvider::openAI)), QString(100'000, u'x'));
    }
    EXPECT_EQ(server.requests().size(), 3U);
}

TEST_F(OneRequestTest, AChunkedAnswerIsPutTogether) {
    server.setAnswer(ScriptedAnswer()
                         .send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n")
                         .sendChunk("{\"output_te")
                         .pause(std::chrono::milliseconds(20))
                         .sendChunk("xt\":\"A\"}")
                         .sendChunk({}));
    EXPECT_EQ(transform(configuration(AIProvider::openAI)), QStringLiteral("A"));
}

} // namespace

} // namespace quillmender::test
