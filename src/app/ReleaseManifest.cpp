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

/// Numbers and dots, and what else people put into versions: nothing that changes how it is shown.
bool isVersion(const QString &version) {
    constexpr QStringView marks(u".+-_ ");
    return !version.isEmpty() && version.size() <= longestVersion &&
           std::ranges::all_of(version, [&](QChar character) {
               return marks.contains(character) ||
                      (character.unicode() < 0x80 && character.isLetterOrNumber());
           });
}

bool isWebAddress(const QUrl &url) {
    return url.isValid() && url.scheme() == QStringLiteral("https") && !url.host().isEmpty();
}

} // namespace

ReleaseManifest decodeReleaseManifest(const QByteArray &bytes) {
    const Json document = decodeJson(bytes);
    const QString version = member::text(document, "version");
    if (!isVersion(version))
        throw DecodingError(QStringLiteral("The version is none."));
    const QString address = member::text(document, "download_url");
    const QUrl downloadURL(address, QUrl::StrictMode);
    if (address.size() > longestAddress || !isWebAddress(downloadURL))
        throw DecodingError(QStringLiteral("The address of the download is not one of the web."));
    return {version, downloadURL};
}

} // namespace quillmender
