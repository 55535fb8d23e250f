#include "app/UpdateChecker.h"
#include "providers/QtHttpTransport.h"
#include "support/LoopbackServer.h"
#include "support/RunTask.h"
#include "support/SecureServer.h"

#include <QSslConfiguration>
#include <gtest/gtest.h>

namespace quillmender::test {
namespace {

const char manifest[] = R"({"version":"1.4.2","download_url":"https://releases.test/get"})";

/// The check over TLS.
class UpdateSecureTest : public testing::Test {
  protected:
    void SetUp() override { before_ = QSslConfiguration::defaultConfiguration(); }
    void TearDown() override { QSslConfiguration::setDefaultConfiguration(before_); }

    static void trust(const SecureServer &server) {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificate(server.certificate());
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    static bool findsUpdate(const QString &url) {
        QtHttpTransport transport(std::chrono::seconds(20));
        return runTask(UpdateChecker(transport).checkForUpdate(QStringLiteral("1.0.0"), QUrl(url)))
            .has_value();
    }

  private:
    QSslConfiguration before_;
};

TEST_F(UpdateSecureTest, FindsTheReleaseBehindATrustedCertificate) {
    SecureServer server;
    trust(server);
    server.answer("/latest.json", manifest);
    EXPECT_TRUE(findsUpdate(server.url("/latest.json")));
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(UpdateSecureTest, ACertificateThatNobodySignedIsRefused) {
    SecureServer server;
    server.answer("/latest.json", manifest);
    EXPECT_FALSE(findsUpdate(server.url("/latest.json")));
    EXPECT_EQ(server.requestCount(), 0);
}

TEST_F(UpdateSecureTest, RedirectsToHttpsAreFollowed) {
    SecureServer server;
    SecureServer elsewhere;
    trust(server);
    trust(elsewhere);
    server.redirect("/latest.json", "/newer.json");
    server.redirect("/newer.json", elsewhere.url("/deep/latest.json"));
    elsewhere.answer("/deep/latest.json", manifest);
    EXPECT_TRUE(findsUpdate(server.url("/latest.json")));
    EXPECT_EQ(server.requestCount(), 2);
    EXPECT_EQ(elsewhere.requestCount(), 1);
}

TEST_F(UpdateSecureTest, ARedirectToAnUntrustedHostIsNothing) {
    SecureServer server;
    SecureServer elsewhere;
    trust(server);
    server.redirect("/latest.json", elsewhere.url("/latest.json"));
    elsewhere.answer("/latest.json", manifest);
    EXPECT_FALSE(findsUpdate(server.url("/latest.json")));
    EXPECT_EQ(elsewhere.requestCount(), 0);
}

TEST_F(UpdateSecureTest, ARedirectToPlainHttpIsRefused) {
    SecureServer server;
    LoopbackServer plain;
    plain.setAnswer(ScriptedAnswer::http(200, manifest));
    trust(server);
    server.redirect("/latest.json", plain.baseUrl() + QStringLiteral("/latest.json"));
    EXPECT_FALSE(findsUpdate(server.url("/latest.json")));
    EXPECT_EQ(server.requestCount(), 1);
    EXPECT_TRUE(plain.requests().empty());
}

TEST_F(UpdateSecureTest, ACircleOfRedirectsEnds) {
    SecureServer server;
    trust(server);
    server.redirect("/latest.json", "/latest.json");
    EXPECT_FALSE(findsUpdate(server.url("/latest.json")));
    EXPECT_LE(server.requestCount(), 20);
}

} // namespace
} // namespace quillmender::test
