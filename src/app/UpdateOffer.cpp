#include "app/UpdateOffer.h"

namespace quillmender {

UpdateOffer::UpdateOffer(UpdateChecker updateChecker, ReleaseSource release, Workspace &workspace,
                         ShowAlert showAlert)
    : updateChecker_(updateChecker),
      release_(std::move(release)),
      workspace_(workspace),
      showAlert_(std::move(showAlert)) {}

QCoro::Task<std::optional<ReleaseManifest>> UpdateOffer::checkForUpdate() const {
    return updateChecker_.checkForUpdate(release_.currentVersion, release_.manifestURL);
}

void UpdateOffer::presentAlertIfNeeded(const ReleaseManifest &manifest) {
    if (hasPresentedUpdateAlert_)
        return;
    hasPresentedUpdateAlert_ = true;
    const Alert alert{
        QStringLiteral("Quillmender %1 is available").arg(manifest.version),
        QStringLiteral("A newer version of Quillmender has been published. Do you want to download "
                       "it now?"),
        {QStringLiteral("Download"), QStringLiteral("Later")}};
    showAlert_(alert, [&workspace = workspace_, url = manifest.downloadURL](int button) {
        if (button == 0)
            workspace.openUrl(url);
    });
}

void UpdateOffer::openDownload(const ReleaseManifest &manifest) {
    workspace_.openUrl(manifest.downloadURL);
}

} // namespace quillmender
