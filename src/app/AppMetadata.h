#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace quillmender {

/// What the program knows of itself.
namespace AppMetadata {

/// The installed bundle's version when the system knows one, otherwise that of the build.
QString version(const std::optional<QString> &bundleVersion);

/// Where the newest release is announced: on the release host of the build.
QUrl updateManifestURL();

} // namespace AppMetadata

} // namespace quillmender
