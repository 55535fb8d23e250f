#include "app/UpdateChecker.h"
#include "providers/QtHttpTransport.h"
#include "support/LoopbackServer.h"
#include "support/RunTask.h"

#include <gtest/gtest.h>

namespace quillmender::test {
namespace {

const QByteArray manifest = R"({"version":"1.4.2","download_url":"https://releases.test/get"})";

/// The check over real HTTP.
class UpdateWireTest : public testing::Test {
  protected:
    bool findsUpdate(std::chrono::milliseconds timeout = std::chrono::seconds(20)) {
        QtHttpTransport transport(timeout);
        const QUrl url(server.baseUrl() + QStringLiteral("/latest.json"));
        return runTask(UpdateChecker(transport).checkForUpdate(QStringLiteral("1.0.0"), url))
            .has_value();
    }
    bool findsUpdateIn(const ScriptedAnswer &answer) {
        server.setAnswer(answer);
        return findsUpdate();
    }
    bool findsUpdateIn(const QByteArray &body) {
        return findsUpdateIn(ScriptedAnswer::http(200, body));
    }

    LoopbackServer server;
};

TEST_F(UpdateWireTest, OneGetFindsTheRelease) {
    EXPECT_TRUE(findsUpdateIn(manifest));
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 1U);
    EXPECT_EQ(requests.front().method, "GET");
    EXPECT_EQ(requests.front().target, "/latest.json");
    EXPECT_TRUE(requests.front().body.isEmpty());
    EXPECT_EQ(requests.front().header("Cookie"), std::nullopt);
    EXPECT_EQ(requests.front().header("Authorization"), std::nullopt);
    EXPECT_EQ(requests.front().header("Referer"), std::nullopt);
}

TEST_F(UpdateWireTest, OtherStatusesAreNothing) {
    for (const int status : {304, 400, 401, 403, 404, 410, 429, 500, 503}) {
        const auto before = server.requests().size();
        EXPECT_FALSE(findsUpdateIn(ScriptedAnswer::http(status, status == 304 ? "" : manifest)))
            << status;
        EXPECT_EQ(server.requests().size(), before + 1) << status;
    }
    EXPECT_TRUE(findsUpdateIn(ScriptedAnswer::http(203, manifest)));
}

TEST_F(UpdateWireTest, BadManifestsAreNothing) {
    for (const QByteArray &body :
         {QByteArray(), QByteArray("<!doctype html>"), QByteArray("{}"), manifest.chopped(1),
          QByteArray(R"({"version":"1.4.2"})"), manifest + manifest,
          QByteArray("\x1f\x8b\x08\x00\x00", 5), QByteArray(1000, '\0')})
        EXPECT_FALSE(findsUpdateIn(body)) << body.toStdString();
}

TEST_F(UpdateWireTest, BrokenAnswersAreNothing) {
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n";
    for (const auto &answer : {ScriptedAnswer().close(), ScriptedAnswer().reset(),
                               ScriptedAnswer().send("SSH-2.0-OpenSSH\r\n\r\n").close(),
                               ScriptedAnswer().send(head + manifest).close(),
                               ScriptedAnswer().send(head + manifest).reset()})
        EXPECT_FALSE(findsUpdateIn(answer));
}

TEST_F(UpdateWireTest, NoServerIsNothing) {
    QtHttpTransport transport(std::chrono::seconds(20));
    QUrl url;
    {
        const LoopbackServer gone;
        url = QUrl(gone.baseUrl());
    }
    EXPECT_EQ(runTask(UpdateChecker(transport).checkForUpdate(QStringLiteral("1"), url)),
              std::nullopt);
}

TEST_F(UpdateWireTest, ASlowServerIsNotWaitedForForever) {
    server.setAnswer(ScriptedAnswer().hold().send("HTTP/1.1 200 OK\r\n\r\n" + manifest).close());
    EXPECT_FALSE(findsUpdate(std::chrono::milliseconds(150)));
    server.setAnswer(ScriptedAnswer().send("HTTP/1.1 200 OK\r\nContent-Len").hold());
    EXPECT_FALSE(findsUpdate(std::chrono::milliseconds(150)));
}

TEST_F(UpdateWireTest, AnEndlessAnswerIsCutOff) {
    constexpr qint64 mebibyte = 1'048'576;
    EXPECT_FALSE(
        findsUpdateIn(ScriptedAnswer()
                          .send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n")
                          .send("100000\r\n" + QByteArray(mebibyte, ' ') + "\r\n", 65536)));
    EXPECT_LT(server.bytesSent(), 16384 * mebibyte);
    EXPECT_TRUE(findsUpdateIn(manifest + QByteArray(65'536 - manifest.size(), ' ')));
    EXPECT_FALSE(findsUpdateIn(manifest + QByteArray(65'537 - manifest.size(), ' ')));
}

TEST_F(UpdateWireTest, NoRedirectLeadsToPlainHttp) {
    for (const int status : {301, 302, 303, 307, 308}) {
        const LoopbackServer elsewhere;
        server.setAnswer(
            ScriptedAnswer::http(status, manifest, "text/html",
                                 {"Location: " + elsewhere.baseUrl().toUtf8() + "/latest.json"}));
        EXPECT_FALSE(findsUpdate()) << status;
        EXPECT_TRUE(elsewhere.requests().empty()) << status;
    }
}

TEST_F(UpdateWireTest, NoRedirectLeadsOutOfHttp) {
    for (const char *target : {"/other.json", "file:///etc/passwd", "data:,{}", "ftp://127.0.0.1/"})
        EXPECT_FALSE(findsUpdateIn(
            ScriptedAnswer::http(302, manifest, "text/html", {QByteArray("Location: ") + target})))
            << target;
    EXPECT_EQ(server.requests().size(), 4U);
}

TEST_F(UpdateWireTest, AskingEndsWithTheProgram) {
    server.setAnswer(ScriptedAnswer().hold());
    QtHttpTransport transport(std::chrono::seconds(20));
    auto check = UpdateChecker(transport).checkForUpdate(
        QStringLiteral("1"), QUrl(server.baseUrl() + QStringLiteral("/latest.json")));
    transport.cancelAll();
    EXPECT_EQ(runTask(std::move(check)), std::nullopt);
}

} // namespace
} // namespace quillmender::test
