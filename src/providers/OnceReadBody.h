#pragma once

#include <QByteArray>
#include <QIODevice>

namespace quillmender {

/// The body of a request that must not be sent twice. The network layer starts a request again on
/// its own when a kept connection breaks, by rewinding the body: here that fails once a byte has
/// been read.
class OnceReadBody : public QIODevice {
    Q_OBJECT

  public:
    OnceReadBody(QByteArray body, QObject *parent);

    qint64 size() const override { return body_.size(); }
    bool seek(qint64 position) override;
    bool reset() override { return seek(0); }

  protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 size) override;

  private:
    QByteArray body_;
    bool wasRead_ = false;
};

} // namespace quillmender
