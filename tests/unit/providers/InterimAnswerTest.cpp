#include "providers/TransportError.h"
#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

/// Statuses below 200 come before an answer. One that is taken for the answer leaves the real one
/// to whoever asks next.
class InterimAnswerTest : public ProviderTest {
  protected:
    static QByteArray interim(int status) {
        return "HTTP/1.1 " + QByteArray::number(status) + " Interim\r\nLink: </a>\r\n\r\n";
    }

    static QByteArray answer(const char *text) {
        return ScriptedAnswer::http(200, openAIBody(QString::fromUtf8(text))).steps().front().bytes;
    }

    /// Each request with this text gets the script, every other one "two" at once.
    void play(const ScriptedAnswer &script) {
        server.setResponder([script](const ReceivedRequest &request) {
            return request.body.contains("first") ? script : ScriptedAnswer().send(answer("two"));
        });
    }

    QString ask(const char *prompt) {
        return transform(configuration(AIProvider::openAI), QString::fromUtf8(prompt));
    }

    QString failureOf(const char *prompt) {
        return descriptionOf<TransportError>([&] { ask(prompt); });
    }
};

TEST_F(InterimAnswerTest, EachRequestGetsItsOwnAnswer) {
    for (const auto status : {100, 102, 103, 104, 110, 199}) {
        play(ScriptedAnswer()
                 .send(interim(status))
                 .pause(std::chrono::milliseconds(200))
                 .send(answer("one")));
        EXPECT_EQ(ask("first"), QStringLiteral("one")) << status;
        EXPECT_EQ(ask("second"), QStringLiteral("two")) << status;
    }
}

TEST_F(InterimAnswerTest, ManyInARowAreNoAnswer) {
    play(ScriptedAnswer().send(interim(103), 100).send(answer("one")));
    EXPECT_EQ(ask("first"), QStringLiteral("one"));
    play(ScriptedAnswer().send(interim(103), 100'000'000));
    EXPECT_EQ(failureOf("first"),
              QStringLiteral("The answer of 127.0.0.1:%1 is too large.").arg(server.port()));
}

TEST_F(InterimAnswerTest, AnotherProtocolIsNoAnswer) {
    play(ScriptedAnswer()
             .send(interim(101))
             .pause(std::chrono::milliseconds(200))
             .send(answer("one")));
    EXPECT_EQ(
        failureOf("first"),
        QStringLiteral("The answer of 127.0.0.1:%1 is not an HTTP answer.").arg(server.port()));
    EXPECT_EQ(ask("second"), QStringLiteral("two"));
}

TEST_F(InterimAnswerTest, AnInterimAnswerAloneIsALostOne) {
    play(ScriptedAnswer().send(interim(103)).close());
    EXPECT_EQ(
        failureOf("first"),
        QStringLiteral("The connection to 127.0.0.1:%1 was lost before the answer was complete.")
            .arg(server.port()));
}

TEST_F(InterimAnswerTest, WhatAnEndedConnectionSaysReachesNobody) {
    for (const auto *afterwards :
         {"HTTP/1.1 408 Request Timeout\r\nContent-Length: 4\r\n\r\nlate",
          "HTTP/1.1 200 OK\r\nContent-Length: 21\r\n\r\n{\"output_text\":\"evil\"}"}) {
        play(ScriptedAnswer()
                 .send(answer("one"))
                 .pause(std::chrono::milliseconds(50))
                 .send(afterwards)
                 .close());
        EXPECT_EQ(ask("first"), QStringLiteral("one"));
        const auto before = server.requests().size();
        EXPECT_FALSE(waitUntil([&] { return server.requests().size() != before; },
                               std::chrono::milliseconds(100)));
        EXPECT_EQ(ask("second"), QStringLiteral("two"));
    }
}

} // namespace

} // namespace quillmender::test
