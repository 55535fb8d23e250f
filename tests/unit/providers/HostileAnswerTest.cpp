#include "model/DecodingError.h"
#include "providers/TransportError.h"
#include "unit/providers/ProviderTest.h"

#include <QFile>

namespace quillmender::test {

namespace {

constexpr qint64 mebibyte = qint64{1024} * 1024;

class HostileAnswerTest : public ProviderTest {
  protected:
    QString descriptionFor(const QByteArray &body, const QByteArray &contentType = "text/plain") {
        server.setAnswer(ScriptedAnswer::http(200, body, contentType));
        return descriptionOf<DecodingError>(
            [this] { transform(configuration(AIProvider::openAI)); });
    }

    /// The most memory that this process has had so far.
    static qint64 peakMemory() {
        QFile status(QStringLiteral("/proc/self/status"));
        EXPECT_TRUE(status.open(QIODevice::ReadOnly));
        for (const auto &line : status.readAll().split('\n')) {
            if (line.startsWith("VmHWM:"))
                return line.simplified().split(' ').value(1).toLongLong() * 1024;
        }
        return 0;
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
    EXPECT_EQ(descriptionOf<AppFailure>([this] { transform(configuration(AIProvider::gemini)); }),
              QString::fromUtf8(body));
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

TEST_F(HostileAnswerTest, AnEndlessBodyIsCutOffAndCostsBoundedMemory) {
    const auto before = peakMemory();
    for (const auto status : {200, 500}) {
        server.setAnswer(ScriptedAnswer()
                             .send("HTTP/1.1 " + QByteArray::number(status) +
                                   " X\r\nTransfer-Encoding: chunked\r\n\r\n")
                             .send("100000\r\n" + QByteArray(mebibyte, 'x') + "\r\n", 4096));
        EXPECT_EQ(
            descriptionOf<TransportError>([this] { transform(configuration(AIProvider::openAI)); }),
            QStringLiteral("The answer of 127.0.0.1:%1 is too large.").arg(server.port()));
    }
    // Twice 4 GiB were there to be had; the kernel's socket buffers hold a little beyond the bound.
    EXPECT_LT(server.bytesSent(), 512 * mebibyte);
    EXPECT_LT(peakMemory() - before, 512 * mebibyte);
}

TEST_F(HostileAnswerTest, ACompressedBodyIsNeverInflated) {
    server.setAnswer(ScriptedAnswer::http(200, QByteArray("\x1f\x8b\x08\x00\x00", 5),
                                          "application/json", {"Content-Encoding: gzip"}));
    EXPECT_THROW(transform(configuration(AIProvider::openAI)), DecodingError);
}

TEST_F(HostileAnswerTest, EndlessHeadersEnd) {
    QtHttpTransport impatient(std::chrono::milliseconds(1000));
    client = LLMClient(impatient);
    server.setAnswer(ScriptedAnswer()
                         .send("HTTP/1.1 200 OK\r\n")
                         .send("X-Header: " + QByteArray(1000, 'x') + "\r\n", 100)
                         .hold());
    EXPECT_THROW(transform(configuration(AIProvider::openAI)), TransportError);
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
