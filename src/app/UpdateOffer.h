#pragma once

#include "app/ReleaseManifest.h"
#include "app/UpdateChecker.h"
#include "platform/Workspace.h"
#include "ui/Alert.h"

#include <functional>

namespace quillmender {

/// What the update check compares the running program with.
struct ReleaseSource {
    QString currentVersion;
    QUrl manifestURL;
};

/// Looks for a newer release and offers its download.
class UpdateOffer {
  public:
    /// Shows the alert in front of everything and returns; `answered` gets the button's index.
    using ShowAlert = std::function<void(const Alert &alert, std::function<void(int)> answered)>;

    /// The workspace outlives this object and every alert.
    UpdateOffer(UpdateChecker updateChecker, ReleaseSource release, Workspace &workspace,
                ShowAlert showAlert);

    /// As UpdateChecker::checkForUpdate().
    QCoro::Task<std::optional<ReleaseManifest>> checkForUpdate() const;

    /// Offers the download, but only the first time in the life of this object.
    void presentAlertIfNeeded(const ReleaseManifest &manifest);

    void openDownload(const ReleaseManifest &manifest);

  private:
    UpdateChecker updateChecker_;
    ReleaseSource release_;
    Workspace &workspace_;
    ShowAlert showAlert_;
    bool hasPresentedUpdateAlert_ = false;
};

} // namespace quillmender
