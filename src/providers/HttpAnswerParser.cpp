#include "providers/HttpAnswerParser.h"

#include <algorithm>

namespace quillmender {

namespace {

/// All status lines and headers together, those of interim answers included.
constexpr qsizetype largestHead = qsizetype{256} * 1024;
constexpr qsizetype longestLine = qsizetype{64} * 1024;

/// Far beyond every bound, far below what a number can hold.
constexpr qsizetype mostDigits = 15;

constexpr QByteArrayView versionPrefix("HTTP/1.");

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isHexadecimal(char byte) {
    return isDigit(byte) || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}

bool isNamed(QByteArrayView name, const char *expected) {
    return name.compare(expected, Qt::CaseInsensitive) == 0;
}

} // namespace

HttpAnswerParser::HttpAnswerParser(qsizetype largestBody, Body body)
    : largestBody_(largestBody),
      hasBody_(body == Body::read) {}

qsizetype HttpAnswerParser::feed(QByteArrayView bytes) {
    qsizetype used = 0;
    while (used < bytes.size() && !isOver()) {
        const QByteArrayView rest = bytes.sliced(used);
        const bool isInBody =
            step_ == Step::bodyOfLength || step_ == Step::bodyUntilEnd || step_ == Step::chunk;
        used += isInBody ? feedBody(rest) : feedLine(rest);
    }
    return used;
}

void HttpAnswerParser::end() {
    if (isOver())
        return;
    // Behind the last chunk nothing is missing that anybody needs.
    if (step_ == Step::bodyUntilEnd || step_ == Step::trailers)
        step_ = Step::complete;
    else
        fail(TransportError::Kind::connectionLost);
}

qsizetype HttpAnswerParser::feedLine(QByteArrayView bytes) {
    const qsizetype lineEnd = bytes.indexOf('\n');
    const QByteArrayView part = lineEnd < 0 ? bytes : bytes.first(lineEnd);
    const qsizetype used = lineEnd < 0 ? bytes.size() : lineEnd + 1;
    if (step_ != Step::chunkSize && step_ != Step::chunkEnd)
        headSize_ += used;
    if (headSize_ > largestHead || line_.size() + part.size() > longestLine) {
        fail(TransportError::Kind::tooLarge);
        return used;
    }
    if (lineEnd < 0 || !line_.isEmpty())
        line_.append(part);
    QByteArrayView line = lineEnd < 0 || !line_.isEmpty() ? QByteArrayView(line_) : part;
    if (step_ == Step::status) {
        const qsizetype known = std::min(line.size(), versionPrefix.size());
        if (line.first(known) != versionPrefix.first(known)) {
            fail(TransportError::Kind::notHttp);
            return used;
        }
    }
    if (lineEnd >= 0) {
        if (line.endsWith('\r'))
            line.chop(1);
        readLine(line);
        line_.resize(0);
    }
    return used;
}

qsizetype HttpAnswerParser::feedBody(QByteArrayView bytes) {
    const bool isCounted = step_ != Step::bodyUntilEnd;
    const qsizetype used = isCounted ? std::min(bytes.size(), missing_) : bytes.size();
    if (used > largestBody_ - body_.size()) {
        fail(TransportError::Kind::tooLarge);
        return used;
    }
    body_.append(bytes.first(used));
    if (isCounted) {
        missing_ -= used;
        if (missing_ == 0)
            step_ = step_ == Step::chunk ? Step::chunkEnd : Step::complete;
    }
    return used;
}

void HttpAnswerParser::readLine(QByteArrayView line) {
    switch (step_) {
    case Step::status:
        readStatus(line);
        return;
    case Step::headers:
        if (line.isEmpty())
            endHeaders();
        else
            readHeader(line);
        return;
    case Step::chunkSize:
        readChunkSize(line);
        return;
    case Step::chunkEnd:
        if (line.isEmpty())
            step_ = Step::chunkSize;
        else
            fail(TransportError::Kind::notHttp);
        return;
    case Step::trailers:
        if (line.isEmpty())
            step_ = Step::complete;
        return;
    default:
        return;
    }
}

void HttpAnswerParser::readStatus(QByteArrayView line) {
    // "HTTP/1.1 200", and perhaps a space and a reason.
    constexpr qsizetype size = 12;
    const bool isLongEnough = line.size() >= size && (line.size() == size || line[size] == ' ');
    const QByteArrayView number = isLongEnough ? line.sliced(9, 3) : QByteArrayView();
    const bool isStatus = isLongEnough && isDigit(line[7]) && line[8] == ' ' && number[0] != '0' &&
                          std::all_of(number.begin(), number.end(), isDigit);
    if (!isStatus) {
        fail(TransportError::Kind::notHttp);
        return;
    }
    status_ = number.toInt();
    length_.reset();
    isChunked_ = false;
    location_.clear();
    step_ = Step::headers;
}

void HttpAnswerParser::readHeader(QByteArrayView line) {
    // The rest of a header above it, which HTTP has given up: what belongs to what is a guess.
    if (line.front() == ' ' || line.front() == '\t') {
        fail(TransportError::Kind::notHttp);
        return;
    }
    const qsizetype colon = line.indexOf(':');
    if (colon < 0)
        return;
    const QByteArrayView name = line.first(colon).trimmed();
    const QByteArrayView value = line.sliced(colon + 1).trimmed();
    if (isNamed(name, "content-length")) {
        readLength(value);
    } else if (isNamed(name, "transfer-encoding")) {
        if (!isNamed(value, "chunked") || isChunked_)
            fail(TransportError::Kind::notHttp);
        isChunked_ = true;
    } else if (isNamed(name, "location")) {
        location_ = value.toByteArray();
    }
}

void HttpAnswerParser::readLength(QByteArrayView value) {
    const bool isLength = !value.isEmpty() && value.size() <= mostDigits &&
                          std::all_of(value.begin(), value.end(), isDigit);
    if (!isLength || (length_ && *length_ != value.toLongLong()))
        fail(TransportError::Kind::notHttp);
    length_ = value.toLongLong();
}

void HttpAnswerParser::endHeaders() {
    constexpr int switchingProtocols = 101;
    constexpr int noContent = 204;
    constexpr int notModified = 304;
    if (problem_)
        return;
    if (status_ == switchingProtocols) {
        // Nobody asked for it, and what would follow is not HTTP.
        fail(TransportError::Kind::notHttp);
    } else if (status_ < 200) {
        step_ = Step::status;
    } else if (!hasBody_ || status_ == noContent || status_ == notModified) {
        step_ = Step::complete;
    } else if (isChunked_) {
        step_ = Step::chunkSize;
    } else if (length_) {
        expect(*length_, Step::bodyOfLength);
    } else {
        step_ = Step::bodyUntilEnd;
    }
}

void HttpAnswerParser::readChunkSize(QByteArrayView line) {
    const qsizetype extension = line.indexOf(';');
    const QByteArrayView digits = (extension < 0 ? line : line.first(extension)).trimmed();
    bool isNumber = !digits.isEmpty() && digits.size() <= mostDigits &&
                    std::all_of(digits.begin(), digits.end(), isHexadecimal);
    const qsizetype size = isNumber ? digits.toLongLong(&isNumber, 16) : 0;
    if (!isNumber || size < 0)
        fail(TransportError::Kind::notHttp);
    else if (size == 0)
        step_ = Step::trailers;
    else
        expect(size, Step::chunk);
}

void HttpAnswerParser::expect(qsizetype length, Step step) {
    if (length > largestBody_ - body_.size()) {
        fail(TransportError::Kind::tooLarge);
        return;
    }
    missing_ = length;
    step_ = length > 0 ? step : Step::complete;
}

void HttpAnswerParser::fail(TransportError::Kind problem) {
    if (!problem_)
        problem_ = problem;
    body_.clear();
}

} // namespace quillmender
