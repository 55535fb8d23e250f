#include "app/UpdateChecker.h"

#include <algorithm>
#include <charconv>

namespace quillmender {

namespace {

// A manifest has some hundred bytes.
constexpr qsizetype largestManifest = qsizetype{64} * 1024;

bool isPlaceholder(const QUrl &url) {
    const QString host = url.host();
    return host == QStringLiteral("example") || host.endsWith(QStringLiteral(".example"));
}

bool isSuccess(const HttpResponse &response) {
    return response.status && *response.status >= 200 && *response.status <= 299;
}

qint64 number(const QString &part) {
    const QByteArray text = part.toUtf8();
    const char *begin = text.constBegin();
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        ++begin;
    qint64 value = 0;
    const auto [end, error] = std::from_chars(begin, text.constEnd(), value);
    return error == std::errc() && end == text.constEnd() ? value : 0;
}

} // namespace

QCoro::Task<std::optional<ReleaseManifest>> UpdateChecker::checkForUpdate(QString currentVersion,
                                                                          QUrl manifestURL) const {
    if (isPlaceholder(manifestURL))
        co_return std::nullopt;
    auto &transport = *transport_;
    HttpRequest request(manifestURL);
    request.redirects = HttpRequest::Redirects::httpsOnly;
    request.largestAnswer = largestManifest;
    try {
        const HttpResponse response = co_await transport.send(std::move(request));
        if (!isSuccess(response))
            co_return std::nullopt;
        const ReleaseManifest manifest = decodeReleaseManifest(response.body);
        if (isNewer(manifest.version, currentVersion))
            co_return manifest;
    } catch (const std::exception &) {
        // No release that can be told of is no news.
        co_return std::nullopt;
    }
    co_return std::nullopt;
}

bool UpdateChecker::isNewer(const QString &candidate, const QString &reference) {
    const QStringList candidateParts = candidate.split(u'.', Qt::SkipEmptyParts);
    const QStringList referenceParts = reference.split(u'.', Qt::SkipEmptyParts);
    const qsizetype count = std::max(candidateParts.size(), referenceParts.size());
    for (qsizetype i = 0; i < count; ++i) {
        const qint64 candidateNumber = number(candidateParts.value(i));
        const qint64 referenceNumber = number(referenceParts.value(i));
        if (candidateNumber != referenceNumber)
            return candidateNumber > referenceNumber;
    }
    return false;
}

} // namespace quillmender
