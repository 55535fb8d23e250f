#pragma once

#include "app/AppCoordinator.h"
#include "app/AppMetadata.h"
#include "app/QuitRequests.h"
#include "app/WarmUp.h"
#include "platform/Platform.h"
#include "providers/QtHttpTransport.h"
#include "ui/Theme.h"

#include <QCoroTask>

#include <memory>

namespace quillmender {

class AboutWindowController;
class AlertWindow;
class ReadyPanel;
class SettingsWindowController;

/// Owns the platform's services and the coordinator for the life of the process.
class AppDelegate {
  public:
    explicit AppDelegate(std::unique_ptr<Platform> platform,
                         const QUrl &manifestURL = AppMetadata::updateManifestURL(),
                         WarmUp::Pace warmUp = {});
    AppDelegate(const AppDelegate &) = delete;
    AppDelegate &operator=(const AppDelegate &) = delete;
    ~AppDelegate();

    /// Becomes a program of the status area, then starts the coordinator. Nothing is started
    /// unless the claim to be this user's only copy is held.
    InstanceClaim applicationDidFinishLaunching();

    static constexpr bool applicationShouldTerminateAfterLastWindowClosed() { return false; }

  private:
    void perform(const QString &action);
    WindowFactory windows();
    void showSettings();
    void showAbout();
    void showAlert(const Alert &alert, std::function<void(int)> answered);
    Theme &theme();
    bool isQuiet() const;
    bool prepareMore();
    QCoro::Task<> terminate();

    std::unique_ptr<Platform> platform_;
    QtHttpTransport transport_;
    std::unique_ptr<Theme> theme_; ///< made with the first window
    AppCoordinator coordinator_;
    std::unique_ptr<ReadyPanel> readyPanel_; ///< until the panel is first wanted
    WarmUp warmUp_;
    std::unique_ptr<SettingsWindowController> settingsWindow_; ///< made when first shown
    std::unique_ptr<AboutWindowController> aboutWindow_;       ///< made when first shown
    std::unique_ptr<AlertWindow> alertWindow_;                 ///< while it waits for an answer
    bool isTerminating_ = false;
    QuitRequests quitRequests_{[this] { coordinator_.quit(); }};
};

} // namespace quillmender
