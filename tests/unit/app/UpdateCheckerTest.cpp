#include "app/UpdateChecker.h"

#include "app/AppMetadata.h"
#include "platform/Clock.h"
#include "providers/TransportError.h"
#include "support/RunTask.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

const QUrl manifestURL(QStringLiteral("https://releases.test/latest.json"));

/// Answers at once, or throws.
class ReadyTransport : public HttpTransport {
  public:
    QCoro::Task<HttpResponse> send(HttpRequest request) override {
        requests.append(request);
        if (error)
            std::rethrow_exception(error);
        co_return std::as_const(response);
    }
    void cancelAll() override {}

    HttpResponse response{200, {}};
    std::exception_ptr error;
    QList<HttpRequest> requests;
};

class UpdateCheckerTest : public testing::Test {
  protected:
    std::optional<ReleaseManifest> check(const QString &running = QStringLiteral("1.0.0"),
                                         const QUrl &url = manifestURL) {
        return test::runTask(UpdateChecker(transport).checkForUpdate(running, url));
    }

    std::optional<ReleaseManifest> checkAgainst(const QByteArray &manifest) {
        transport.response.body = manifest;
        return check();
    }

    bool isNewer(const char *candidate, const char *running) {
        transport.response.body = QByteArray(R"({"version":")") + candidate +
                                  R"(","download_url":"https://releases.test/"})";
        return check(QString::fromUtf8(running)).has_value();
    }

    ReadyTransport transport;
};

TEST_F(UpdateCheckerTest, FindsANewerRelease) {
    EXPECT_EQ(
        checkAgainst(R"({"version":"1.4.2","download_url":"https://releases.test/get","x":1})"),
        (ReleaseManifest{QStringLiteral("1.4.2"),
                         QUrl(QStringLiteral("https://releases.test/get"))}));
}

TEST_F(UpdateCheckerTest, AsksOnceAndPlainly) {
    check();
    ASSERT_EQ(transport.requests.size(), 1);
    const HttpRequest &request = transport.requests.constFirst();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url, manifestURL);
    EXPECT_TRUE(request.headers.isEmpty());
    EXPECT_TRUE(request.body.isEmpty());
    EXPECT_EQ(request.redirects, HttpRequest::Redirects::httpsOnly);
    EXPECT_EQ(request.timeout, std::chrono::seconds(60));
    EXPECT_LE(request.largestAnswer, 1024 * 1024);
}

TEST_F(UpdateCheckerTest, NobodyIsAskedForAHostThatCannotBe) {
    transport.response.body = R"({"version":"9","download_url":"https://releases.test/get"})";
    for (const char *host : {"https://releases.quillmender.example/latest.json",
                             "https://RELEASES.EXAMPLE:8443/latest.json", "https://example/"})
        EXPECT_EQ(check(QStringLiteral("1"), QUrl(QLatin1String(host))), std::nullopt);
    EXPECT_TRUE(transport.requests.isEmpty());
    EXPECT_TRUE(check(QStringLiteral("1"), QUrl(QStringLiteral("https://notexample/"))));
}

TEST_F(UpdateCheckerTest, AnyAnswerOutsideOfSuccessIsNothing) {
    const QByteArray manifest = R"({"version":"2","download_url":"https://releases.test/get"})";
    for (const int status : {100, 199, 300, 301, 304, 404, 500}) {
        transport.response.status = status;
        EXPECT_EQ(checkAgainst(manifest), std::nullopt) << status;
    }
    transport.response.status.reset();
    EXPECT_EQ(checkAgainst(manifest), std::nullopt) << "not HTTP";
    for (const int status : {200, 204, 299}) {
        transport.response.status = status;
        EXPECT_TRUE(checkAgainst(manifest)) << status;
    }
}

TEST_F(UpdateCheckerTest, AnyErrorIsNothing) {
    transport.response.body = R"({"version":"2","download_url":"https://releases.test/get"})";
    transport.error =
        std::make_exception_ptr(TransportError(TransportError::Kind::timedOut, manifestURL));
    EXPECT_EQ(check(), std::nullopt);
    transport.error = std::make_exception_ptr(CancellationError());
    EXPECT_EQ(check(), std::nullopt);
}

TEST_F(UpdateCheckerTest, AnyBadManifestIsNothing) {
    for (const char *manifest :
         {"",
          "null",
          "[]",
          "\"2\"",
          "2",
          "{",
          "not json",
          "<html></html>",
          "{}",
          R"({"version":"2"})",
          R"({"download_url":"https://releases.test/get"})",
          R"({"version":2,"download_url":"https://releases.test/get"})",
          R"({"version":null,"download_url":"https://releases.test/get"})",
          R"({"version":["2"],"download_url":"https://releases.test/get"})",
          R"({"version":"2","download_url":null})",
          R"({"version":"2","download_url":7})",
          R"({"version":"2","download_url":{}})",
          R"({"version":"2","download_url":""})",
          R"({"version":"2","download_url":"https://releases test/get"})",
          R"({"version":"2","download_url":"https://releases.test:port/get"})",
          R"({"version":"2","download_url":"https://[half"})",
          R"({"Version":"2","downloadURL":"https://releases.test/get"})",
          R"({"version":"2","download_url":"https://releases.test/get"} more)",
          "{\"version\":\"2\xff\",\"download_url\":\"https://releases.test/get\"}"})
        EXPECT_EQ(checkAgainst(manifest), std::nullopt) << manifest;
    EXPECT_EQ(checkAgainst(QByteArray(60'000, '[')), std::nullopt);
}

TEST_F(UpdateCheckerTest, ComparesNumberByNumber) {
    EXPECT_TRUE(isNewer("1.0.1", "1.0.0"));
    EXPECT_TRUE(isNewer("1.0.0.1", "1.0.0"));
    EXPECT_TRUE(isNewer("1.10", "1.9"));
    EXPECT_TRUE(isNewer("2", "1.9.9"));
    EXPECT_TRUE(isNewer("1.0.1", "1"));
    EXPECT_FALSE(isNewer("1.0", "1.0.0"));
    EXPECT_FALSE(isNewer("1.2.0", "1.2"));
    EXPECT_FALSE(isNewer("1.2", "1.2.0"));
    EXPECT_FALSE(isNewer("1.9", "1.10"));
    EXPECT_FALSE(isNewer("1.0.9", "1.1"));
    EXPECT_FALSE(isNewer("1.0.0", "1.0.0"));
}

TEST_F(UpdateCheckerTest, PartsThatAreNoNumbersCountAsZero) {
    EXPECT_TRUE(isNewer("2.0-beta", "1.9"));
    EXPECT_FALSE(isNewer("2.0-beta", "2.0"));
    EXPECT_FALSE(isNewer("2.1-beta", "2.0")) << "2.0";
    EXPECT_FALSE(isNewer("v2", "1.0"));
    EXPECT_FALSE(isNewer("1b", "0"));
    EXPECT_FALSE(isNewer(" 2", "1"));
    EXPECT_FALSE(isNewer("2 ", "1"));
    EXPECT_FALSE(isNewer("0x10", "0"));
    EXPECT_FALSE(isNewer("1e3", "1"));
    EXPECT_FALSE(isNewer("\xD9\xA3", "1")) << "a digit of another script";
    EXPECT_FALSE(isNewer("9223372036854775808", "0")) << "too large";
    EXPECT_TRUE(isNewer("9223372036854775807", "9223372036854775806"));
    EXPECT_TRUE(isNewer("0", "-1"));
    EXPECT_FALSE(isNewer("-1", "0"));
    EXPECT_TRUE(isNewer("+2", "1"));
    EXPECT_FALSE(isNewer("+-2", "0"));
    EXPECT_TRUE(isNewer("+-2", "-1")) << "0, not -2";
    EXPECT_FALSE(isNewer("+", "0"));
    EXPECT_FALSE(isNewer("-", "0"));
    EXPECT_TRUE(isNewer("1", "beta"));
}

TEST_F(UpdateCheckerTest, APublishedVersionIsShort) {
    EXPECT_TRUE(isNewer(QByteArray("1.").repeated(16).constData(), "0"));
    EXPECT_FALSE(isNewer((QByteArray("1.").repeated(16) + '1').constData(), "0"));
    EXPECT_FALSE(isNewer(QByteArray(50'000, '1').constData(), "0"));
}

TEST_F(UpdateCheckerTest, NothingInAPublishedVersionChangesHowItIsShown) {
    for (const char *version : {"2.2,0", "2.2\\n0", "2.<b>2</b>", "2.2\\u0000", "2.2\\u202e",
                                "2.\xD9\xA3", "2.2&amp;", "2.2%1"})
        EXPECT_FALSE(isNewer(version, "0")) << version;
}

TEST_F(UpdateCheckerTest, OnlyPagesOfTheWebAreOpened) {
    for (const char *address :
         {"file:///etc/passwd", "smb://host/share", "javascript:alert(1)", "apt:hello",
          "http://releases.test/get", "ftp://releases.test/get", "data:text/html,x",
          "x-apple.systempreferences:com.apple.preference.security", "/get", "get",
          "//releases.test/get", "https:", "https:get", "https:///get",
          "httpsx://releases.test/"}) {
        transport.response.body =
            QByteArray(R"({"version":"2","download_url":")") + address + R"("})";
        EXPECT_EQ(check(), std::nullopt) << address;
    }
    EXPECT_TRUE(
        checkAgainst(R"({"version":"2","download_url":"HTTPS://releases.test:8443/a?b#c"})"));
    EXPECT_EQ(checkAgainst(R"({"version":"2","download_url":"https://releases.test/)" +
                           QByteArray(3000, 'x') + R"("})"),
              std::nullopt);
}

TEST_F(UpdateCheckerTest, EmptyPartsAreDropped) {
    EXPECT_FALSE(isNewer("", "0"));
    EXPECT_FALSE(isNewer("", ""));
    EXPECT_FALSE(isNewer(".", "0.0"));
    EXPECT_FALSE(isNewer("...", "."));
    EXPECT_FALSE(isNewer("1..2", "1.2"));
    EXPECT_TRUE(isNewer("1..3", "1.2"));
    EXPECT_TRUE(isNewer(".2.", "1"));
}

TEST(AppMetadataTest, TheVersionIsTheBundlesOrTheFirst) {
    EXPECT_EQ(AppMetadata::version(QStringLiteral("3.2.1")), QStringLiteral("3.2.1"));
    EXPECT_EQ(AppMetadata::version(std::nullopt), QStringLiteral("1.0.0"));
}

TEST(AppMetadataTest, TheManifestIsOnTheReleaseHost) {
    const QUrl url = AppMetadata::updateManifestURL();
    EXPECT_EQ(url.scheme(), QStringLiteral("https"));
    EXPECT_EQ(url.path(), QStringLiteral("/latest.json"));
    EXPECT_FALSE(url.host().isEmpty());
    EXPECT_FALSE(url.hasQuery());
}

} // namespace
} // namespace quillmender
