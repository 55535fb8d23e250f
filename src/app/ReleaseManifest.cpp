#include "app/ReleaseManifest.h"

#include "model/DecodingError.h"
#include "model/Json.h"

#include <algorithm>

namespace quillmender {

namespace {

/// The version is shown, and the address handed to the desktop, which would run programs and mount
/// folders for others.
constexpr qsizetype longestVersion = 32;
constexpr qsizetype longestAddress = 2048;

bool isVersionNumber(const QString &version) {
    return !version.isEmpty() && version.size() <= longestVersion &&
           std::ranges::all_of(version, [](QChar character) {
               return character == u'.' || (character >= u'0' && character <= u'9');
           });
}

bool isWebAddress(const QUrl &url) {
    return url.isValid() && url.scheme() == QStringLiteral("https") && !url.host().isEmpty();
}

} // namespace

ReleaseManifest decodeReleaseManifest(const QByteArray &bytes) {
    const Json document = decodeJson(bytes);
    const QString version = member::text(document, "version");
    if (!isVersionNumber(version))
        throw DecodingError(QStringLiteral("The version is not a number with dots."));
    const QString address = member::text(document, "download_url");
    const QUrl downloadURL(address, QUrl::StrictMode);
    if (address.size() > longestAddress || !isWebAddress(downloadURL))
        throw DecodingError(QStringLiteral("The address of the download is not one of the web."));
    return {version, downloadURL};
}

} // namespace quillmender
