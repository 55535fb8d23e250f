#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace quillmender {

/// What the release host publishes about the newest version.
struct ReleaseManifest {
    QString version;  ///< dotted numbers, such as 1.4.2
    QUrl downloadURL; ///< page or file to open for the download

    friend bool operator==(const ReleaseManifest &, const ReleaseManifest &) = default;
};

/// The JSON object in `bytes`. Throws DecodingError when one of the two members is missing or has
/// the wrong type, or when the address is not a URL.
ReleaseManifest decodeReleaseManifest(const QByteArray &bytes);

} // namespace quillmender
