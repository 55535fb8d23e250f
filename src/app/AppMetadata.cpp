#include "app/AppMetadata.h"

namespace quillmender::AppMetadata {

QString version(const std::optional<QString> &bundleVersion) {
    return bundleVersion.value_or(QStringLiteral("1.0.0"));
}

QUrl updateManifestURL() {
    static const QUrl url(QStringLiteral("https://" QUILLMENDER_RELEASE_HOST "/latest.json"),
                          QUrl::StrictMode);
    if (!url.isValid())
        qFatal("The address of the release manifest is not a URL.");
    return url;
}

} // namespace quillmender::AppMetadata
