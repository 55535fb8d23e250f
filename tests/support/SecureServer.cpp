#include "support/SecureServer.h"

#include <QProcess>
#include <QTemporaryDir>

#define CPPHTTPLIB_OPENSSL_SUPPORT
#include <httplib.h>

#include <atomic>
#include <stdexcept>
#include <thread>

namespace quillmender::test {

namespace {

void makeCertificate(const QString &key, const QString &certificate) {
    const int exitCode = QProcess::execute(
        QStringLiteral("openssl"),
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
         QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
         QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-subj"),
         QStringLiteral("/CN=127.0.0.1"), QStringLiteral("-addext"),
         QStringLiteral("subjectAltName=IP:127.0.0.1"), QStringLiteral("-keyout"), key,
         QStringLiteral("-out"), certificate});
    if (exitCode != 0)
        throw std::runtime_error("no certificate could be made");
}

} // namespace

struct SecureServer::Implementation {
    QTemporaryDir directory;
    std::unique_ptr<httplib::SSLServer> server;
    int port = 0;
    std::atomic<int> requests = 0;
    std::thread thread;
};

SecureServer::SecureServer() : implementation_(std::make_unique<Implementation>()) {
    const QString key = implementation_->directory.filePath(QStringLiteral("key.pem"));
    const QString certificate =
        implementation_->directory.filePath(QStringLiteral("certificate.pem"));
    makeCertificate(key, certificate);
    certificate_ = QSslCertificate::fromPath(certificate).value(0);
    implementation_->server =
        std::make_unique<httplib::SSLServer>(qPrintable(certificate), qPrintable(key));
    implementation_->port = implementation_->server->bind_to_any_port("127.0.0.1");
    if (implementation_->port <= 0)
        throw std::runtime_error("no loopback port to listen on");
    implementation_->thread =
        std::thread([server = implementation_->server.get()] { server->listen_after_bind(); });
    // Until then it could not be stopped.
    while (!implementation_->server->is_running())
        std::this_thread::yield();
}

SecureServer::~SecureServer() {
    implementation_->server->stop();
    implementation_->thread.join();
}

QString SecureServer::url(const char *path) const {
    return QStringLiteral("https://127.0.0.1:%1").arg(implementation_->port) + QLatin1String(path);
}

void SecureServer::answer(const char *path, const QByteArray &body) {
    implementation_->server->Get(path, [this, text = body.toStdString()](
                                           const httplib::Request &, httplib::Response &response) {
        ++implementation_->requests;
        response.set_content(text, "application/json");
    });
}

void SecureServer::redirect(const char *path, const QString &target) {
    implementation_->server->Get(path, [this, target = target.toStdString()](
                                           const httplib::Request &, httplib::Response &response) {
        ++implementation_->requests;
        response.set_redirect(target);
    });
}

int SecureServer::requestCount() const {
    return implementation_->requests;
}

} // namespace quillmender::test
