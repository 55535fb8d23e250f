#pragma once

#include "app/ReleaseManifest.h"
#include "app/RunningOperations.h"
#include "app/UpdateChecker.h"
#include "model/PromptAction.h"
#include "model/SelectionSession.h"
#include "platform/Platform.h"
#include "providers/LLMClient.h"
#include "selection/PermissionManager.h"
#include "selection/SelectionController.h"
#include "settings/SettingsStore.h"
#include "ui/ActionPickerModel.h"
#include "ui/Alert.h"
#include "ui/PickerPanel.h"

#include <QElapsedTimer>

#include <functional>
#include <memory>
#include <optional>

namespace quillmender {

class HotKeyManager;

/// Makes the windows when they are first needed, so that the coordinator knows no widget.
struct WindowFactory {
    std::function<std::unique_ptr<PickerPanel>(ActionPickerModel &)> pickerPanel;
    std::function<void()> showSettings;
    std::function<void()> showAbout;
    /// Shows the alert in front of everything and returns; `answered` gets the button's index.
    std::function<void(const Alert &alert, std::function<void(int)> answered)> showAlert;
    std::function<void()> terminate;
};

/// What the update check compares the running program with.
struct ReleaseSource {
    QString currentVersion;
    QUrl manifestURL;
};

/// Runs the whole life of a session: hot key or menu, capture, panel, one request to the provider,
/// write-back. Owns every long-lived object but the platform's services. Every failure of a session
/// becomes text in `errorMessage`. Main thread only.
class AppCoordinator : public ActionPickerModel {
    Q_OBJECT

  public:
    AppCoordinator(Platform &platform, LLMClient llmClient, UpdateChecker updateChecker,
                   ReleaseSource release, WindowFactory windows);
    ~AppCoordinator() override;

    /// Status item, hot key, update check. Once, at launch.
    void start();

    /// Captures what the user works on and shows the panel, whatever came of it. Returns at once.
    /// Does nothing while a capture is under way, but for one that is late: that one is given up.
    void beginWorkflow() override;
    void run(const PromptAction &action) override;
    void runCustomInstruction() override;
    void requestAccessibilityAccess() override;
    void openSettings() override;
    void openAbout();
    void hidePanel() override;
    void quit();

    /// Opens the download of the newer release, if there is one.
    void openAvailableUpdate();

    /// Offers the download, but only the first time in the life of the process.
    void presentUpdateAlertIfNeeded(const ReleaseManifest &manifest);

    /// Hides the panel, starts no more operations, and completes when those under way have ended,
    /// or after `limit`.
    QCoro::Task<> endOperations(std::chrono::milliseconds limit);

    QList<PromptAction> actions() const override;
    QString selectedTextPreview() const override { return selectedTextPreview_; }
    QString captureTitle() const override { return captureTitle_; }
    QString captureDescription() const override { return captureDescription_; }
    std::optional<QString> errorMessage() const override { return errorMessage_; }
    bool isWorking() const override { return isWorking_; }
    QString currentActionTitle() const override { return currentActionTitle_; }
    QString customInstruction() const override { return customInstruction_; }
    void setCustomInstruction(const QString &instruction) override;
    bool accessibilityGranted() const override;

    SettingsStore &settingsStore() { return settingsStore_; }
    PermissionManager &permissionManager() { return permissionManager_; }
    /// The newer release that was found at launch.
    const std::optional<ReleaseManifest> &availableUpdate() const { return availableUpdate_; }
    const SelectionSessionRef &currentSession() const { return currentSession_; }

  private:
    using Request = std::function<QCoro::Task<QString>(LLMConfiguration)>;

    void configureStatusItem();
    QCoro::Task<> checkForUpdates();
    void showPanel();
    PickerPanel &panel();
    QCoro::Task<> captureTask();
    QCoro::Task<> transformTask(SelectionSessionRef session, QString title, Request request);
    void transformFailed(const std::exception_ptr &error);
    void captured(SelectionSessionRef session);
    void captureFailed(const std::exception_ptr &error);

    Platform &platform_;
    WindowFactory windows_;

    QString selectedTextPreview_;
    QString captureTitle_;
    QString captureDescription_;
    std::optional<QString> errorMessage_;
    bool isWorking_ = false;
    QString currentActionTitle_;
    QString customInstruction_;
    std::optional<ReleaseManifest> availableUpdate_;

    SettingsStore settingsStore_;
    PermissionManager permissionManager_;
    PasteboardManager pasteboardManager_;
    SelectionController selectionController_;
    LLMClient llmClient_;
    UpdateChecker updateChecker_;
    ReleaseSource release_;
    std::unique_ptr<HotKeyManager> hotKeyManager_;
    std::unique_ptr<PickerPanel> panelController_;
    SelectionSessionRef currentSession_;
    bool isCapturing_ = false;
    QElapsedTimer sinceCapture_;
    quint64 latestCapture_ = 0;
    bool isEnding_ = false;
    bool hasPresentedUpdateAlert_ = false;
    RunningOperations operations_;
};

} // namespace quillmender
