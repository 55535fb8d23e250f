#include "providers/TransportError.h"
#include "unit/providers/ProviderTest.h"

#include <QProcess>
#include <QTemporaryDir>

#define CPPHTTPLIB_OPENSSL_SUPPORT
#include <httplib.h>

#include <atomic>
#include <thread>

namespace quillmender::test {

namespace {

/// A TLS server with a certificate that nobody has signed.
class CertificateTest : public ProviderTest {
  protected:
    void SetUp() override {
        ASSERT_TRUE(directory_.isValid());
        const auto key = directory_.filePath(QStringLiteral("key.pem"));
        const auto certificate = directory_.filePath(QStringLiteral("certificate.pem"));
        ASSERT_EQ(QProcess::execute(
                      QStringLiteral("openssl"),
                      {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                       QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                       QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
                       QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-subj"),
                       QStringLiteral("/CN=127.0.0.1"), QStringLiteral("-addext"),
                       QStringLiteral("subjectAltName=IP:127.0.0.1"), QStringLiteral("-keyout"),
                       key, QStringLiteral("-out"), certificate}),
                  0);
        secureServer_ =
            std::make_unique<httplib::SSLServer>(qPrintable(certificate), qPrintable(key));
        ASSERT_TRUE(secureServer_->is_valid());
        secureServer_->Post(".*", [this](const httplib::Request &, httplib::Response &response) {
            ++requestCount_;
            response.set_content(openAIBody(QStringLiteral("A")).toStdString(), "application/json");
        });
        port_ = secureServer_->bind_to_any_port("127.0.0.1");
        ASSERT_GT(port_, 0);
        thread_ = std::thread([this] { secureServer_->listen_after_bind(); });
    }

    void TearDown() override {
        if (secureServer_)
            secureServer_->stop();
        if (thread_.joinable())
            thread_.join();
    }

    LLMConfiguration secureConfiguration() const {
        auto settings = configuration(AIProvider::openAI);
        settings.endpoint = QStringLiteral("https://127.0.0.1:%1/v1/responses").arg(port_);
        return settings;
    }

    int port_ = 0;
    std::atomic<int> requestCount_ = 0;

  private:
    QTemporaryDir directory_;
    std::unique_ptr<httplib::SSLServer> secureServer_;
    std::thread thread_;
};

TEST_F(CertificateTest, ACertificateThatNobodySignedIsRefused) {
    const auto description =
        descriptionOf<TransportError>([this] { transform(secureConfiguration()); });
    EXPECT_TRUE(description.startsWith(
        QStringLiteral("No secure connection to 127.0.0.1:%1 could be made. ").arg(port_)))
        << description.toStdString();
    EXPECT_TRUE(description.contains(QStringLiteral("certificate"), Qt::CaseInsensitive));
    EXPECT_EQ(requestCount_, 0);
}

} // namespace

} // namespace quillmender::test
