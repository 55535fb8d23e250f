#pragma once

#include "providers/HttpResponse.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <exception>

class QNetworkReply;

namespace quillmender {

/// One request under way: collects the answer within its bounds of time and size.
class HttpExchange : public QObject {
    Q_OBJECT

  public:
    /// Takes over the reply. An answer with more than `largestBody` bytes is an error.
    HttpExchange(QNetworkReply *reply, std::chrono::milliseconds timeout, qsizetype largestBody);
    ~HttpExchange() override;

    bool isFinished() const { return isFinished_; }

    /// Once finished: the answer, or throws what it ended with.
    HttpResponse takeResponse();

    void cancel();

  Q_SIGNALS:
    /// Exactly once, never from within the constructor.
    void finished();

  private:
    /// Nothing is read before the end: the unread bytes are the size so far.
    void checkSize();
    void complete();
    void fail(std::exception_ptr error);
    void finish();

    QPointer<QNetworkReply> reply_;
    QTimer timer_;
    qsizetype largestBody_;
    HttpResponse response_;
    QString certificateProblem_;
    std::exception_ptr error_;
    bool isFinished_ = false;
};

} // namespace quillmender
