#pragma once

#include "app/ReleaseManifest.h"
#include "app/RunningOperations.h"
#include "app/SessionState.h"
#include "app/StatusMenu.h"
#include "app/UpdateOffer.h"
#include "model/PromptAction.h"
#include "platform/Platform.h"
#include "providers/LLMClient.h"
#include "selection/PermissionManager.h"
#include "selection/SelectionController.h"
#include "settings/SettingsStore.h"
#include "ui/ActionPickerModel.h"
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
    UpdateOffer::ShowAlert showAlert;
    std::function<void()> terminate;
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

    /// Learns what the first capture needs to know of the application in front.
    QCoro::Task<> prepareCapture();

    /// Hides the panel, starts no more operations, and completes when those under way have ended,
    /// or after `limit`.
    QCoro::Task<> endOperations(std::chrono::milliseconds limit);

    /// Whether no session is under way or about to be.
    bool isQuiet() const { return !isEnding_ && !operations_.areUnderWay(); }

    QList<PromptAction> actions() const override;
    QString selectedTextPreview() const override { return state_.selectedTextPreview; }
    QString captureTitle() const override { return state_.captureTitle; }
    QString captureDescription() const override { return state_.captureDescription; }
    std::optional<QString> errorMessage() const override { return state_.errorMessage; }
    bool isWorking() const override { return isWorking_; }
    QString currentActionTitle() const override { return state_.currentActionTitle; }
    QString customInstruction() const override { return state_.customInstruction; }
    void setCustomInstruction(const QString &instruction) override;
    bool accessibilityGranted() const override;

    SettingsStore &settingsStore() { return settingsStore_; }
    PermissionManager &permissionManager() { return permissionManager_; }
    /// The newer release that was found at launch.
    const std::optional<ReleaseManifest> &availableUpdate() const { return availableUpdate_; }
    const SelectionSessionRef &currentSession() const { return state_.currentSession; }

  private:
    using Request = std::function<QCoro::Task<QString>(LLMConfiguration)>;

    void configureStatusItem();
    QCoro::Task<> checkForUpdates();
    void showPanel();
    PickerPanel &panel();
    QCoro::Task<> captureTask();
    QCoro::Task<> transformTask(SelectionSessionRef session, QString title, Request request);
    void transformFailed(const std::exception_ptr &error);
    void refuse(const QString &message);
    QCoro::Task<> paste(SelectionSessionRef session, QString replacement);
    void captured(SelectionSessionRef session);
    void captureFailed(const std::exception_ptr &error);

    /// The one place where a session's state is set as a whole: each of these fields takes its
    /// value of `next`, in this order, and what changes is announced before. The others stay.
    template <typename... Field>
    void become(const SessionState &next, Field SessionState::*...fields) {
        (publishChange(state_.*fields, next.*fields), ...);
    }
    template <typename Field> void publishChange(Field &property, const Field &value) {
        if (property != value)
            publish(property, value);
    }

    Platform &platform_;
    WindowFactory windows_;

    SessionState state_;
    bool isWorking_ = false;
    std::optional<ReleaseManifest> availableUpdate_;

    SettingsStore settingsStore_;
    PermissionManager permissionManager_;
    PasteboardManager pasteboardManager_;
    SelectionController selectionController_;
    LLMClient llmClient_;
    UpdateOffer updateOffer_;
    StatusMenu statusMenu_;
    std::unique_ptr<HotKeyManager> hotKeyManager_;
    std::unique_ptr<PickerPanel> panelController_;
    bool isCapturing_ = false;
    QElapsedTimer sinceCapture_;
    quint64 latestCapture_ = 0;
    bool isEnding_ = false;
    RunningOperations operations_;
};

} // namespace quillmender
