#include "providers/HttpAnswerParser.h"

#include <gtest/gtest.h>

namespace quillmender::test {

namespace {

using Kind = TransportError::Kind;

struct Reading {
    std::optional<Kind> problem;
    bool isOver = false;
    int status = 0;
    QByteArray body;
    QByteArray location;
    qsizetype used = 0;

    friend bool operator==(const Reading &, const Reading &) = default;
};

Reading readInPieces(const QByteArray &bytes, qsizetype size, bool ends) {
    HttpAnswerParser parser(20);
    Reading reading;
    for (qsizetype begin = 0; begin < bytes.size() && !parser.isOver(); begin += size)
        reading.used += parser.feed(bytes.mid(begin, size));
    if (ends)
        parser.end();
    reading.problem = parser.problem();
    reading.isOver = parser.isOver();
    if (parser.isOver() && !reading.problem) {
        reading.status = parser.status();
        reading.location = parser.location();
        reading.body = parser.takeBody();
    }
    return reading;
}

/// The same, however the bytes come.
Reading read(const QByteArray &bytes, bool ends = false) {
    const Reading whole = readInPieces(bytes, bytes.size(), ends);
    for (const qsizetype size : {1, 2, 3, 7}) {
        Reading pieces = readInPieces(bytes, size, ends);
        if (whole.problem)
            pieces.used = whole.used;
        EXPECT_EQ(pieces, whole) << bytes.toStdString() << " in pieces of " << size;
    }
    return whole;
}

TEST(HttpAnswerParserTest, TheLengthEndsABody) {
    const QByteArray answer = "HTTP/1.1 200 OK\r\ncontent-length : 5 \r\n\r\nhello";
    const Reading reading = read(answer + "HTTP/1.1 200 OK\r\n");
    EXPECT_EQ(reading.body, "hello");
    EXPECT_EQ(reading.status, 200);
    EXPECT_EQ(reading.used, answer.size());
    EXPECT_FALSE(read(answer.chopped(1)).isOver);
    EXPECT_EQ(read(answer.chopped(1), true).problem, Kind::connectionLost);
}

TEST(HttpAnswerParserTest, TheLastChunkEndsABody) {
    const QByteArray answer = "HTTP/1.1 200 OK\nTransfer-Encoding: Chunked\nContent-Length: 3\n\n"
                              "3;x=y\nhel\n02 \r\nlo\r\n0\r\nX: y\r\n\r\n";
    EXPECT_EQ(read(answer + "more").body, "hello");
    EXPECT_EQ(read(answer + "more").used, answer.size());
    EXPECT_EQ(read(answer.first(answer.indexOf("0\r\nX") + 3), true).body, "hello");
    EXPECT_EQ(read(answer.first(answer.indexOf("0\r\nX")), true).problem, Kind::connectionLost);
}

TEST(HttpAnswerParserTest, TheConnectionEndsABodyWithoutEither) {
    EXPECT_FALSE(read("HTTP/1.0 500\r\n\r\nhello").isOver);
    EXPECT_EQ(read("HTTP/1.0 500\r\n\r\nhello", true).body, "hello");
}

TEST(HttpAnswerParserTest, SomeStatusesHaveNoBody) {
    EXPECT_EQ(read("HTTP/1.1 204 No\r\nContent-Length: 5\r\n\r\n").status, 204);
    EXPECT_EQ(read("HTTP/1.1 304 No\r\nContent-Length: 5\r\n\r\n").status, 304);
    HttpAnswerParser parser(20, HttpAnswerParser::Body::absent);
    EXPECT_EQ(parser.feed("HTTP/1.1 200 Established\r\n\r\nx"), 28);
    EXPECT_TRUE(parser.isOver());
}

TEST(HttpAnswerParserTest, InterimAnswersLeaveNothingBehind) {
    const Reading reading = read("HTTP/1.1 103 Early\r\nContent-Length: 9\r\nLocation: /a\r\n\r\n"
                                 "HTTP/1.1 199\r\nTransfer-Encoding: chunked\r\n\r\n"
                                 "HTTP/1.1 302 Found\r\nContent-Length: 2\r\n\r\nhi");
    EXPECT_EQ(reading.status, 302);
    EXPECT_EQ(reading.body, "hi");
    EXPECT_EQ(reading.location, "");
    EXPECT_EQ(read("HTTP/1.1 302 Found\r\nLocation: /a\r\nContent-Length: 0\r\n\r\n").location,
              "/a");
}

TEST(HttpAnswerParserTest, NonsenseIsNotHttp) {
    for (const auto *bytes :
         {"SSH-2.0\r\n",
          "\r\n",
          "HTTP/2 200 OK\r\n",
          "http/1.1 200 OK\r\n",
          "HTTP/1.x 200 OK\r\n",
          "HTTP/1.1 200OK\r\n",
          "HTTP/1.1\r\n",
          "HTTP/1.1 101 Switching\r\n\r\n",
          "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nContent-Length: 2\r\n",
          "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n",
          "HTTP/1.1 200 OK\r\nContent-Length: 1, 1\r\n",
          "HTTP/1.1 200 OK\r\nContent-Length:\r\n",
          "HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip\r\n",
          "HTTP/1.1 200 OK\r\nX-A: b\r\n Content-Length: 3\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n+1\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0x1\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nx\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n-1\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\nxx\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffffffffffff\r\n"})
        EXPECT_EQ(read(bytes).problem, Kind::notHttp) << bytes;
}

TEST(HttpAnswerParserTest, ABodyHasABound) {
    const QByteArray fits(20, 'x');
    const QByteArray chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n" + fits).body, fits);
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\n\r\n" + fits, true).body, fits);
    EXPECT_EQ(read(chunked + "14\r\n" + fits + "\r\n0\r\n\r\n").body, fits);
    for (const auto &bytes : {"HTTP/1.1 200 OK\r\nContent-Length: 21\r\n\r\n" + fits,
                              "HTTP/1.1 200 OK\r\n\r\n" + fits + 'x', chunked + "15\r\n",
                              chunked + "14\r\n" + fits + "\r\n1\r\n"})
        EXPECT_EQ(read(bytes).problem, Kind::tooLarge) << bytes.toStdString();
}

} // namespace

} // namespace quillmender::test
