#include "providers/HttpExchange.h"

#include "platform/Clock.h"
#include "providers/TransportError.h"

#include <QNetworkReply>
#include <QSslError>

namespace quillmender {

namespace {

/// More than the network thread hands over at once: it stops before the block that would overfill
/// the buffer, and the bound must have been passed by then.
constexpr qsizetype largestBlock = qsizetype{32} * 1024 * 1024;

/// The network layer rewinds a body that it has sent when it meets a redirect that it does not
/// follow, and when the connection closes behind an answer without a length. The answer is whole
/// then, although rewinding failed.
bool isWholeThoughRewound(const QNetworkReply &reply, qsizetype bodySize) {
    if (reply.hasRawHeader("Transfer-Encoding"))
        return false;
    const auto length = reply.header(QNetworkRequest::ContentLengthHeader);
    return !length.isValid() || length.toLongLong() == bodySize;
}

/// Statuses outside 2xx are errors for the network layer, but answers here.
bool isAnswer(const QNetworkReply &reply, qsizetype bodySize) {
    const auto error = reply.error();
    switch (error) {
    case QNetworkReply::NoError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::ProtocolInvalidOperationError:
        return true;
    case QNetworkReply::ContentReSendError:
        return isWholeThoughRewound(reply, bodySize);
    default:
        return (error >= QNetworkReply::ContentAccessDenied &&
                error <= QNetworkReply::UnknownContentError) ||
               error >= QNetworkReply::InternalServerError;
    }
}

} // namespace

HttpExchange::HttpExchange(QNetworkReply *reply, std::chrono::milliseconds timeout,
                           qsizetype largestBody)
    : reply_(reply),
      largestBody_(largestBody) {
    // A full buffer stops the network thread from reading, however late this one gets its turn.
    // The size is lost when it is set before the request has gone to that thread.
    QMetaObject::invokeMethod(
        reply, [reply, largestBody] { reply->setReadBufferSize(largestBody + largestBlock); },
        Qt::QueuedConnection);
    connect(reply, &QNetworkReply::readyRead, this, &HttpExchange::checkSize);
    connect(reply, &QNetworkReply::finished, this, &HttpExchange::complete);
    connect(reply, &QNetworkReply::sslErrors, this, [this](const QList<QSslError> &errors) {
        if (!errors.isEmpty())
            certificateProblem_ = errors.first().errorString();
    });
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] {
        fail(std::make_exception_ptr(
            TransportError(TransportError::Kind::timedOut, reply_->request().url())));
    });
    timer_.start(timeout);
}

HttpExchange::~HttpExchange() {
    if (reply_.isNull())
        return;
    reply_->disconnect(this);
    reply_->deleteLater();
}

HttpResponse HttpExchange::takeResponse() {
    if (error_)
        std::rethrow_exception(error_);
    return std::move(response_);
}

void HttpExchange::cancel() {
    fail(std::make_exception_ptr(CancellationError()));
}

void HttpExchange::checkSize() {
    if (reply_->bytesAvailable() > largestBody_) {
        fail(std::make_exception_ptr(
            TransportError(TransportError::Kind::tooLarge, reply_->request().url())));
    }
}

void HttpExchange::complete() {
    checkSize();
    if (isFinished_)
        return;
    response_.body = reply_->readAll();
    const auto status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid() || !isAnswer(*reply_, response_.body.size())) {
        error_ = std::make_exception_ptr(
            TransportError::from(reply_->error(), reply_->request().url(), certificateProblem_));
    }
    response_.status = status.toInt();
    response_.redirectTarget =
        reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    finish();
}

void HttpExchange::fail(std::exception_ptr error) {
    if (isFinished_)
        return;
    error_ = std::move(error);
    if (!reply_.isNull()) {
        reply_->disconnect(this);
        reply_->abort();
    }
    finish();
}

void HttpExchange::finish() {
    isFinished_ = true;
    timer_.stop();
    Q_EMIT finished();
}

} // namespace quillmender
