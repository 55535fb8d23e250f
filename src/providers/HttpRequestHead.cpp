#include "providers/HttpRequestHead.h"

namespace quillmender {

namespace {

constexpr quint16 plainPort = 80;
constexpr quint16 securePort = 443;

quint16 usualPort(const QUrl &url) {
    return url.scheme() == QStringLiteral("https") ? securePort : plainPort;
}

QByteArray hostName(const QUrl &url) {
    const QByteArray name = url.host(QUrl::FullyEncoded).toUtf8();
    return name.contains(':') ? '[' + name + ']' : name;
}

QByteArray hostAndPort(const QUrl &url) {
    return hostName(url) + ':' + QByteArray::number(portOf(url));
}

QByteArray hostLine(const QUrl &url) {
    return "Host: " + (portOf(url) == usualPort(url) ? hostName(url) : hostAndPort(url)) + "\r\n";
}

QByteArray target(const QUrl &url) {
    QByteArray target = url.path(QUrl::FullyEncoded).toUtf8();
    if (target.isEmpty())
        target = "/";
    if (url.hasQuery())
        target += '?' + url.query(QUrl::FullyEncoded).toUtf8();
    return target;
}

QByteArray credentialsLine(const QNetworkProxy &proxy) {
    if (proxy.user().isEmpty())
        return {};
    const QByteArray credentials = (proxy.user() + u':' + proxy.password()).toUtf8();
    return "Proxy-Authorization: Basic " + credentials.toBase64() + "\r\n";
}

QByteArray head(const HttpRequest &request, const QByteArray &target, const QByteArray &lines) {
    constexpr qsizetype usualSize = 512;
    QByteArray head;
    // It holds the key: growing would leave copies behind.
    qsizetype size = usualSize + target.size() + lines.size();
    for (const auto &[name, value] : request.headers)
        size += name.size() + value.size() + 4;
    head.reserve(size + request.url.host().size() * 8);

    head.append(request.method).append(' ').append(target).append(" HTTP/1.1\r\n");
    head.append(hostLine(request.url));
    for (const auto &[name, value] : request.headers)
        head.append(name).append(": ").append(value).append("\r\n");
    head.append("User-Agent: Quillmender\r\nAccept-Encoding: identity\r\n");
    if (request.method == "POST" || !request.body.isEmpty())
        head.append("Content-Length: " + QByteArray::number(request.body.size()) + "\r\n");
    head.append(lines).append("Connection: close\r\n\r\n");
    return head;
}

} // namespace

QByteArray requestHead(const HttpRequest &request) {
    return head(request, target(request.url), {});
}

QByteArray requestHeadForProxy(const HttpRequest &request, const QNetworkProxy &proxy) {
    return head(request,
                request.url.scheme().toUtf8() + "://" + hostAndPort(request.url) +
                    target(request.url),
                credentialsLine(proxy));
}

QByteArray tunnelHead(const HttpRequest &request, const QNetworkProxy &proxy) {
    const QByteArray host = hostAndPort(request.url);
    return "CONNECT " + host + " HTTP/1.1\r\nHost: " + host + "\r\nUser-Agent: Quillmender\r\n" +
           credentialsLine(proxy) + "\r\n";
}

quint16 portOf(const QUrl &url) {
    return static_cast<quint16>(url.port(usualPort(url)));
}

} // namespace quillmender
