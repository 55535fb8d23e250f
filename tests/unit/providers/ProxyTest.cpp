#include "providers/HttpExchange.h"
#include "providers/TransportError.h"
#include "unit/providers/ProviderTest.h"

namespace quillmender::test {

namespace {

/// A proxy is in the way of a request; the loopback server plays it.
class ProxyTest : public ProviderTest {
  protected:
    HttpResponse fetch(const char *address, QNetworkProxy::ProxyType type,
                       std::chrono::milliseconds timeout = std::chrono::seconds(20)) {
        HttpRequest request(QUrl(QLatin1String(address)), timeout);
        HttpExchange exchange(
            request, QNetworkProxy(type, QStringLiteral("127.0.0.1"), port_, user_, password_));
        EXPECT_TRUE(waitUntil([&] { return exchange.isFinished(); }));
        return exchange.takeResponse();
    }

    QString failureOf(const char *address, QNetworkProxy::ProxyType type = QNetworkProxy::HttpProxy,
                      std::chrono::milliseconds timeout = std::chrono::seconds(20)) {
        return descriptionOf<TransportError>([&] { fetch(address, type, timeout); });
    }

    QString proxyName() const { return QStringLiteral("127.0.0.1:%1").arg(port_); }

    quint16 port_ = server.port();
    QString user_;
    QString password_;
};

constexpr auto plain = "http://provider.test/v1?x=1";
constexpr auto secure = "https://provider.test/v1";

TEST_F(ProxyTest, APlainRequestIsPassedOn) {
    server.setAnswer(ScriptedAnswer::http(200, "hello"));
    user_ = QStringLiteral("me");
    password_ = QStringLiteral("pass");
    EXPECT_EQ(fetch(plain, QNetworkProxy::HttpProxy).body, "hello");
    EXPECT_EQ(onlyRequest().target, "http://provider.test:80/v1?x=1");
    EXPECT_EQ(onlyRequest().header("Host"), "provider.test");
    EXPECT_EQ(onlyRequest().header("Proxy-Authorization"), "Basic bWU6cGFzcw==");
}

TEST_F(ProxyTest, ASecureRequestAsksForATunnelAndSaysNothingElse) {
    server.setAnswer(ScriptedAnswer::http(403, "denied"));
    EXPECT_EQ(failureOf(secure),
              QStringLiteral("The request to provider.test failed at the proxy %1. Its answer was "
                             "403.")
                  .arg(proxyName()));
    EXPECT_EQ(onlyRequest().method, "CONNECT");
    EXPECT_EQ(onlyRequest().target, "provider.test:443");
    EXPECT_EQ(onlyRequest().headerLines,
              QByteArrayList({"Host: provider.test:443", "User-Agent: Quillmender"}));
}

TEST_F(ProxyTest, AProxyThatWantsAPasswordIsNamed) {
    server.setAnswer(ScriptedAnswer::http(407, "x", "text/plain", {"Proxy-Authenticate: NTLM"}));
    for (const auto *address : {plain, secure})
        EXPECT_EQ(failureOf(address),
                  QStringLiteral("The request to provider.test failed at the proxy %1. Its answer "
                                 "was 407.")
                      .arg(proxyName()));
}

TEST_F(ProxyTest, AProxyThatBreaksOffOrTalksNonsenseIsNamed) {
    const auto expected =
        QStringLiteral("The request to provider.test failed at the proxy %1.").arg(proxyName());
    for (const auto &answer :
         {ScriptedAnswer().close(), ScriptedAnswer().reset(), ScriptedAnswer().send("SSH-2.0\r\n"),
          ScriptedAnswer().send("HTTP/1.1 000 X\r\n\r\n"),
          ScriptedAnswer().send("HTTP/1.1 103 X\r\n\r\n").close()}) {
        server.setAnswer(answer);
        EXPECT_EQ(failureOf(plain), expected);
        EXPECT_EQ(failureOf(secure), expected);
    }
    server.setAnswer(ScriptedAnswer().send("HTTP/1.1 200 OK\r\n\r\nHTTP/1.1 200 OK\r\n\r\n"));
    EXPECT_TRUE(failureOf(secure).startsWith(expected));
}

TEST_F(ProxyTest, AProxyThatTalksWithoutEndIsCutOff) {
    for (const auto &answer :
         {ScriptedAnswer().send("HTTP/1.1 200 OK\r\n").send(QByteArray(100'000, 'x'), 100'000),
          ScriptedAnswer().send("HTTP/1.1 103 OK\r\n\r\n", 100'000'000)}) {
        server.setAnswer(answer);
        EXPECT_TRUE(failureOf(secure).contains(proxyName()));
    }
}

TEST_F(ProxyTest, ASlowProxyIsNamed) {
    server.setAnswer(ScriptedAnswer().hold());
    EXPECT_EQ(
        failureOf(secure, QNetworkProxy::HttpProxy, std::chrono::milliseconds(150)),
        QStringLiteral("The request to provider.test timed out at the proxy %1.").arg(proxyName()));
}

TEST_F(ProxyTest, AProxyThatIsNotThereIsNamed) {
    {
        const LoopbackServer gone;
        port_ = gone.port();
    }
    for (const auto type : {QNetworkProxy::HttpProxy, QNetworkProxy::Socks5Proxy}) {
        EXPECT_EQ(failureOf(plain, type),
                  QStringLiteral("No connection to the proxy %1 could be made.").arg(proxyName()));
        EXPECT_EQ(failureOf(secure, type),
                  QStringLiteral("No connection to the proxy %1 could be made.").arg(proxyName()));
    }
}

TEST_F(ProxyTest, ASocksProxyThatIsNoneIsNamed) {
    server.setAnswer(ScriptedAnswer());
    // It says nothing to what it takes for half a request.
    EXPECT_TRUE(failureOf(plain, QNetworkProxy::Socks5Proxy, std::chrono::milliseconds(300))
                    .contains(proxyName()));
}

} // namespace

} // namespace quillmender::test
