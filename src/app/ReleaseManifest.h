#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace quillmender {

/// What the release host publishes about the newest version.
struct ReleaseManifest {
    QString version;  ///< dotted numbers, such as 1.4.2; from 1 to 32 digits and dots
    QUrl downloadURL; ///< page or file to open for the download; always https

    friend bool operator==(const ReleaseManifest &, const ReleaseManifest &) = default;
};

/// The JSON object in `bytes`. Throws DecodingError when one of the two members is missing, has the
/// wrong type, or is not what ReleaseManifest says.
ReleaseManifest decodeReleaseManifest(const QByteArray &bytes);

} // namespace quillmender
