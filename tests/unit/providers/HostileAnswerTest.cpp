#include "model/DecodingError.h"
#include "providers/TransportError.h"
#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

class HostileAnswerTest : public ProviderTest {
  protected:
    QString descriptionFor(const QByteArray &body, const QByteArray &contentType = "text/plain") {
        server.setAnswer(ScriptedAnswer::http(200, body, contentType));
        return descriptionOf<DecodingError>(
            [this] { transform(configuration(AIProvider::openAI)); });
    }
};

TEST_F(HostileAnswerTest, WhatIsNotJsonIsADecodingErrorWithoutItsText) {
    const auto expected = QStringLiteral("The data could not be read: it is not valid JSON.");
    EXPECT_EQ(descriptionFor(""), expected);
    EXPECT_EQ(descriptionFor("plain text"), expected);
    EXPECT_EQ(descriptionFor("<!DOCTYPE html><html>Log in</html>", "text/html"), expected);
    EXPECT_EQ(descriptionFor(openAIBody(QStringLiteral("cut")).chopped(3)), expected);
    EXPECT_EQ(descriptionFor("{\"output_text\":\"caf\xE9\"}"), expected);
    EXPECT_EQ(descriptionFor("{\"output_text\":\"\\ud83d\"}"), expected);
    EXPECT_EQ(descriptionFor("{} {}"), expected);
    EXPECT_EQ(descriptionFor(QByteArray("\x1f\x8b\x08\x00gzip", 8)), expected);
}

TEST_F(HostileAnswerTest, NothingIsReadBehindANul) {
    const auto expected = QStringLiteral("The data could not be read: it is not valid JSON.");
    const QByteArray nul(1, '\0');
    const QByteArray answer = R"({"output_text":"A"})";
    EXPECT_EQ(descriptionFor(answer + nul), expected);
    EXPECT_EQ(descriptionFor(answer + nul + "and more"), expected);
    EXPECT_EQ(descriptionFor(nul + answer), expected);
    EXPECT_EQ(descriptionFor("{\"output_text\":\"A" + nul + "B\"}"), expected);
}

TEST_F(HostileAnswerTest, ATextWithANulIsRefused) {
    const auto text = QStringLiteral("Hello") + QChar(QChar::Null) + QStringLiteral("you");
    const auto expected =
        QStringLiteral("The data could not be read: the text holds a NUL character.");
    EXPECT_EQ(descriptionFor(openAIBody(text)), expected);
    EXPECT_EQ(descriptionFor(R"({"output_text":"\u0000A"})"), expected);
    server.setAnswer(ScriptedAnswer::http(200, anthropicBody(text)));
    EXPECT_EQ(
        descriptionOf<DecodingError>([this] { transform(configuration(AIProvider::anthropic)); }),
        expected);
    server.setAnswer(ScriptedAnswer::http(200, geminiBody(text)));
    EXPECT_EQ(
        descriptionOf<DecodingError>([this] { transform(configuration(AIProvider::gemini)); }),
        expected);
}

TEST_F(HostileAnswerTest, ANumberThatNobodyAsksForSpoilsNothing) {
    for (const QByteArray &number :
         {QByteArray("1e999"), QByteArray("-1E+999"), QByteArray(400, '9'),
          QByteArray("0.5e123456789012345678901234567890")}) {
        EXPECT_EQ(answerTo(AIProvider::openAI, R"({"a\\":1,"created":)" + number +
                                                   R"(,"x":"\" 1e999","output_text":"A 1e999"})"),
                  QStringLiteral("A 1e999"))
            << number.toStdString();
    }
    EXPECT_EQ(descriptionFor(R"({"output_text":1e999})"),
              QStringLiteral("The data could not be read: “output_text” is not a text."));
    for (const auto *malformed :
         {R"({"a":01e999,"output_text":"A"})", R"({"a":1.e999,"output_text":"A"})",
          R"({"a":1e999e9,"output_text":"A"})", R"({"a":+1e999,"output_text":"A"})",
          R"({"a":1e999,"output_text":"A"}})"}) {
        EXPECT_EQ(descriptionFor(malformed),
                  QStringLiteral("The data could not be read: it is not valid JSON."))
            << malformed;
    }
}

TEST_F(HostileAnswerTest, AByteOrderMarkBeforeTheJsonIsSkipped) {
    EXPECT_EQ(answerTo(AIProvider::openAI, "\xEF\xBB\xBF{\"output_text\":\"A\"}"),
              QStringLiteral("A"));
}

TEST_F(HostileAnswerTest, DeepNestingIsADecodingError) {
    const auto expected = QStringLiteral("The data could not be read: it is too complex.");
    EXPECT_EQ(descriptionFor(QByteArray(100'000, '[')), expected);
    EXPECT_EQ(descriptionFor(QByteArray(100'000, '[') + QByteArray(100'000, ']')), expected);
    EXPECT_EQ(descriptionFor("{\"output\":" + QByteArray("{\"a\":").repeated(100'000)), expected);
}

TEST_F(HostileAnswerTest, DeepNestingInAnErrorIsTextLikeAnyOther) {
    const QByteArray body(100'000, '[');
    server.setAnswer(ScriptedAnswer::http(500, body));
    const auto shown =
        descriptionOf<AppFailure>([this] { transform(configuration(AIProvider::gemini)); });
    EXPECT_TRUE(shown.startsWith(QStringLiteral("[[[[")));
    EXPECT_TRUE(shown.endsWith(QStringLiteral("[…")));
}

TEST_F(HostileAnswerTest, TooManyValuesAreADecodingError) {
    EXPECT_EQ(descriptionFor('[' + QByteArray("0,").repeated(2'000'000) + "0]"),
              QStringLiteral("The data could not be read: it is too complex."));
}

TEST_F(HostileAnswerTest, ABodyOfExactlyTheBoundIsRead) {
    const auto body = openAIBody(QStringLiteral("A"));
    const auto padding = HttpRequest::usualLargestAnswer - body.size();
    server.setAnswer(ScriptedAnswer()
                         .send("HTTP/1.1 200 OK\r\nContent-Length: " +
                               QByteArray::number(HttpRequest::usualLargestAnswer) + "\r\n\r\n" +
                               body)
                         .send(QByteArray(mebibyte, ' '), padding / mebibyte)
                         .send(QByteArray(padding % mebibyte, ' ')));
    EXPECT_EQ(transform(configuration(AIProvider::openAI)), QStringLiteral("A"));
}

TEST_F(HostileAnswerTest, ACompressedBodyIsNeverInflated) {
    server.setAnswer(ScriptedAnswer::http(200, QByteArray("\x1f\x8b\x08\x00\x00", 5),
                                          "application/json", {"Content-Encoding: gzip"}));
    EXPECT_THROW(transform(configuration(AIProvider::openAI)), DecodingError);
}

TEST_F(HostileAnswerTest, EndlessHeadersEnd) {
    const auto expected =
        QStringLiteral("The answer of 127.0.0.1:%1 is too large.").arg(server.port());
    for (const QByteArray &line : {"X-Header: " + QByteArray(1000, 'x') + "\r\n",
                                   QByteArray(100'000, 'x'), QByteArray("a:\n")}) {
        server.setAnswer(ScriptedAnswer().send("HTTP/1.1 200 OK\r\n").send(line, 1'000'000));
        EXPECT_EQ(
            descriptionOf<TransportError>([this] { transform(configuration(AIProvider::openAI)); }),
            expected);
    }
}

TEST_F(HostileAnswerTest, TrailersWithoutEndEnd) {
    server.setAnswer(ScriptedAnswer()
                         .send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n")
                         .send("X-Trailer: " + QByteArray(1000, 'x') + "\r\n", 1'000'000));
    EXPECT_THROW(transform(configuration(AIProvider::openAI)), TransportError);
}

TEST_F(HostileAnswerTest, WhatFollowsTheBodyIsLeftOut) {
    const auto body = openAIBody(QStringLiteral("A"));
    server.setAnswer(ScriptedAnswer().send(
        "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
        body + "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}"));
    EXPECT_EQ(transform(configuration(AIProvider::openAI)), QStringLiteral("A"));
    EXPECT_EQ(answerTo(AIProvider::openAI, openAIBody(QStringLiteral("B"))), QStringLiteral("B"));
}

TEST_F(HostileAnswerTest, AStatusThatIsNoneIsReported) {
    for (const auto *status : {"000", "99", "099", "1000", "-200", "2e2", "20", ""}) {
        server.setAnswer(ScriptedAnswer().send(QByteArray("HTTP/1.1 ") + status +
                                               " X\r\nContent-Length: 19\r\n\r\n"
                                               "{\"output_text\":\"A\"}"));
        EXPECT_EQ(
            descriptionOf<TransportError>([this] { transform(configuration(AIProvider::openAI)); }),
            QStringLiteral("The answer of 127.0.0.1:%1 is not an HTTP answer.").arg(server.port()))
            << status;
    }
}

TEST_F(HostileAnswerTest, StrangeHeadersHurtNobody) {
    const auto body = openAIBody(QStringLiteral("A"));
    for (const QByteArray header :
         {"Content-Length: -5", "Content-Length: 99999999999999999999", "Set-Cookie: a=b",
          "Content-Length: x", "NoColon", ": empty", "Content-Type: \xff\xfe"}) {
        QtHttpTransport impatient(std::chrono::milliseconds(2000));
        client = LLMClient(impatient);
        server.setAnswer(
            ScriptedAnswer().send("HTTP/1.1 200 OK\r\n" + header + "\r\n\r\n" + body).close());
        // An answer or this, nothing else.
        try {
            EXPECT_EQ(transform(configuration(AIProvider::openAI)), QStringLiteral("A"))
                << header.constData();
        } catch (const TransportError &error) {
            EXPECT_FALSE(error.errorDescription().isEmpty());
        }
    }
}

TEST_F(HostileAnswerTest, CookiesAreNotKept) {
    server.setAnswer(ScriptedAnswer::http(200, openAIBody(QStringLiteral("A")), "application/json",
                                          {"Set-Cookie: session=1; Path=/"}));
    transform(configuration(AIProvider::openAI));
    transform(configuration(AIProvider::openAI));
    EXPECT_EQ(server.requests().back().header("cookie"), std::nullopt);
}

} // namespace

} // namespace quillmender::test
