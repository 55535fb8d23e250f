#pragma once

#include <QSslCertificate>
#include <QString>

#include <memory>

namespace quillmender::test {

/// An HTTPS server on 127.0.0.1 with a certificate of its own that nobody has signed.
class SecureServer {
  public:
    SecureServer();
    SecureServer(const SecureServer &) = delete;
    SecureServer &operator=(const SecureServer &) = delete;
    ~SecureServer();

    QString url(const char *path) const;
    const QSslCertificate &certificate() const { return certificate_; }

    /// What a request of the path gets from now on. Before the first request only.
    void answer(const char *path, const QByteArray &body);
    void redirect(const char *path, const QString &target);
    void redirect(const char *path, const char *target) {
        redirect(path, QString::fromLatin1(target));
    }

    int requestCount() const;

  private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
    QSslCertificate certificate_;
};

} // namespace quillmender::test
