#include "providers/HttpExchange.h"
#include "support/SecureServer.h"
#include "unit/providers/ProviderTest.h"

#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>

namespace quillmender::test {

namespace {

/// A proxy that opens a tunnel to whatever it is asked for, at this port of this machine.
class TunnelProxy : public QTcpServer {
    Q_OBJECT

  public:
    explicit TunnelProxy(quint16 target) {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, target] {
            auto *client = nextPendingConnection();
            auto *server = new QTcpSocket(client);
            connect(client, &QTcpSocket::readyRead, this, [this, client, server, target] {
                if (server->state() != QAbstractSocket::UnconnectedState) {
                    server->write(client->readAll());
                    return;
                }
                head += client->readAll();
                if (head.endsWith("\r\n\r\n"))
                    server->connectToHost(QHostAddress::LocalHost, target);
            });
            connect(server, &QTcpSocket::connected, client,
                    [client] { client->write("HTTP/1.1 200 Established\r\nX: y\r\n\r\n"); });
            connect(server, &QTcpSocket::readyRead, client,
                    [client, server] { client->write(server->readAll()); });
            connect(server, &QTcpSocket::disconnected, client,
                    [client] { client->disconnectFromHost(); });
        });
    }

    QByteArray head;
};

class TunnelTest : public testing::Test {
  protected:
    void SetUp() override { before_ = QSslConfiguration::defaultConfiguration(); }
    void TearDown() override { QSslConfiguration::setDefaultConfiguration(before_); }

    void trust() {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificate(server.certificate());
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    HttpResponse fetch(const QString &url) {
        TunnelProxy proxy(static_cast<quint16>(QUrl(server.url("/")).port()));
        HttpRequest request{QUrl(url), std::chrono::seconds(20)};
        request.headers.emplaceBack("Authorization", "Bearer secret");
        HttpExchange exchange(request,
                              QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"),
                                            proxy.serverPort()));
        EXPECT_TRUE(waitUntil([&] { return exchange.isFinished(); }));
        head = proxy.head;
        return exchange.takeResponse();
    }

    SecureServer server;
    QByteArray head;

  private:
    QSslConfiguration before_;
};

TEST_F(TunnelTest, TheProxySeesNothingOfTheRequest) {
    trust();
    const QByteArray body(5'000'000, 'x');
    server.answer("/text", body);
    EXPECT_EQ(fetch(server.url("/text")).body, body);
    EXPECT_TRUE(head.startsWith("CONNECT 127.0.0.1:"));
    EXPECT_FALSE(head.contains("Authorization"));
    EXPECT_FALSE(head.contains("/text"));
}

TEST_F(TunnelTest, TheCertificateIsThatOfTheHost) {
    trust();
    server.answer("/text", "hello");
    const auto address =
        server.url("/text").replace(QStringLiteral("127.0.0.1"), QStringLiteral("provider.test"));
    const auto description = descriptionOf<TransportError>([&] { fetch(address); });
    EXPECT_TRUE(description.startsWith(QStringLiteral("No secure connection to provider.test")))
        << description.toStdString();
    EXPECT_EQ(server.requestCount(), 0);
}

} // namespace

} // namespace quillmender::test

#include "TunnelTest.moc"
