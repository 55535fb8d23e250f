#pragma once

#include "providers/TransportError.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace quillmender {

/// Takes one HTTP/1 answer apart as its bytes come, in pieces of any size. It keeps the body so far
/// and one unfinished line, so that what it holds is bounded whatever a server sends.
class HttpAnswerParser {
  public:
    enum class Body {
        read,   ///< the answer is complete with its body
        absent, ///< the answer is complete with its headers, as that of a proxy to CONNECT
    };

    /// A body of more than `largestBody` bytes is a problem.
    explicit HttpAnswerParser(qsizetype largestBody, Body body = Body::read);

    /// Gives the number of bytes that belong to the answer: fewer than all once it is over.
    qsizetype feed(QByteArrayView bytes);

    /// No more bytes will come.
    void end();

    /// Complete, or with a problem.
    bool isOver() const { return step_ == Step::complete || problem_; }

    /// Why there is no answer.
    std::optional<TransportError::Kind> problem() const { return problem_; }

    /// The final status, once complete: from 200 to 999.
    int status() const { return status_; }
    const QByteArray &location() const { return location_; }
    QByteArray takeBody() { return std::move(body_); }

  private:
    enum class Step {
        status,
        headers,
        bodyOfLength,
        bodyUntilEnd,
        chunkSize,
        chunk,
        chunkEnd,
        trailers,
        complete,
    };

    qsizetype feedLine(QByteArrayView bytes);
    qsizetype feedBody(QByteArrayView bytes);
    void readLine(QByteArrayView line);
    void readStatus(QByteArrayView line);
    void readHeader(QByteArrayView line);
    void readLength(QByteArrayView value);
    void endHeaders();
    void readChunkSize(QByteArrayView line);
    void expect(qsizetype length, Step step);
    void fail(TransportError::Kind problem);

    qsizetype largestBody_;
    bool hasBody_;
    Step step_ = Step::status;
    std::optional<TransportError::Kind> problem_;
    QByteArray line_; ///< its beginning, when the end has not come yet
    qsizetype headSize_ = 0;
    int status_ = 0;
    std::optional<qsizetype> length_;
    bool isChunked_ = false;
    qsizetype missing_ = 0; ///< bytes of the body, or of the chunk, that are still to come
    QByteArray location_;
    QByteArray body_;
};

} // namespace quillmender
