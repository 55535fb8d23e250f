#include "app/UpdateChecker.h"
#include "fuzz/CannedTransport.h"
#include "fuzz/Require.h"
#include "model/Json.h"

#include <cstddef>
#include <cstdint>

using namespace quillmender;
using fuzz::require;

namespace {

QCoro::Task<> check(HttpTransport &transport, QString current,
                    std::optional<ReleaseManifest> &update, bool &isEnded) {
    const UpdateChecker checker(transport);
    update = co_await checker.checkForUpdate(current,
                                             QUrl(QStringLiteral("https://127.0.0.1/latest.json")));
    isEnded = true;
}

std::optional<ReleaseManifest> newerRelease(const QByteArray &manifest, const QString &current) {
    fuzz::CannedTransport transport(HttpResponse{.status = 200, .body = manifest});
    std::optional<ReleaseManifest> update;
    bool isEnded = false;
    const auto checking = check(transport, current, update, isEnded);
    require(isEnded, "a check ends without throwing, whatever is published");
    return update;
}

QByteArray manifestOf(const QString &version) {
    Json manifest;
    manifest["version"] = jsonText(version);
    manifest["download_url"] = "https://127.0.0.1/";
    return encodeJson(manifest);
}

} // namespace

// The running version, a line break, the manifest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const qsizetype lineBreak = bytes.indexOf('\n');
    const QString current = QString::fromUtf8(bytes.left(lineBreak));
    const auto update = newerRelease(lineBreak < 0 ? bytes : bytes.mid(lineBreak + 1), current);
    if (update) {
        require(update->downloadURL.isValid() &&
                    update->downloadURL.scheme() == QStringLiteral("https"),
                "a release can be downloaded, and nothing else opened");
        require(!update->version.isEmpty() && update->version.size() <= 32,
                "a version can be shown");
        require(!newerRelease(manifestOf(current), update->version),
                "of two versions one at most is newer");
    }
    require(!newerRelease(manifestOf(current), current), "no version is newer than itself");
    return 0;
}
