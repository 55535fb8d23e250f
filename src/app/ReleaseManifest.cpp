#include "app/ReleaseManifest.h"

#include "model/DecodingError.h"
#include "model/Json.h"

namespace quillmender {

ReleaseManifest decodeReleaseManifest(const QByteArray &bytes) {
    const Json document = decodeJson(bytes);
    const QString version = member::text(document, "version");
    const QUrl downloadURL(member::text(document, "download_url"), QUrl::StrictMode);
    if (!downloadURL.isValid())
        throw DecodingError(QStringLiteral("The address of the download is not a URL."));
    return {version, downloadURL};
}

} // namespace quillmender
