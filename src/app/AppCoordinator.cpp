#include "app/AppCoordinator.h"

#include "app/FailureReason.h"
#include "app/HotKeyManager.h"
#include "model/AppFailure.h"
#include "model/TextRules.h"
#include "model/UserMessage.h"
#include "selection/UncertainReplacement.h"

#include <QLoggingCategory>
#include <QPointer>

namespace quillmender {

namespace {

// Never the user's text, nor a failure's message, which can quote it.
Q_LOGGING_CATEGORY(log, "quillmender.session", QtWarningMsg)

// An alert takes the keyboard, which a session may be about to use.
constexpr std::chrono::minutes alertPatience(1);
// Even a capture from an application that hangs has shown the panel by then.
constexpr std::chrono::milliseconds captureIsLate(1500);

} // namespace

AppCoordinator::AppCoordinator(Platform &platform, LLMClient llmClient, UpdateChecker updateChecker,
                               ReleaseSource release, WindowFactory windows)
    : platform_(platform),
      windows_(std::move(windows)),
      settingsStore_(*platform.userDefaults, *platform.secrets, *platform.loginItem),
      permissionManager_(*platform.accessibilityAccess, *platform.workspace),
      pasteboardManager_(*platform.pasteboard, *platform.chords),
      selectionController_(pasteboardManager_, *platform.focusedText, *platform.workspace,
                           *platform.clock),
      llmClient_(llmClient),
      updateOffer_(updateChecker, std::move(release), *platform.workspace, windows_.showAlert),
      statusMenu_(*platform.statusItem, {.transformSelection = [this] { beginWorkflow(); },
                                         .openSettings = [this] { openSettings(); },
                                         .openAvailableUpdate = [this] { openAvailableUpdate(); },
                                         .openAbout = [this] { openAbout(); },
                                         .quit = [this] { quit(); }}) {
    permissionManager_.refresh();
    connect(&settingsStore_, &Observable::objectWillChange, this, &Observable::objectWillChange);
    connect(&permissionManager_, &Observable::objectWillChange, this,
            &Observable::objectWillChange);
}

AppCoordinator::~AppCoordinator() = default;

void AppCoordinator::start() {
    configureStatusItem();
    hotKeyManager_ =
        std::make_unique<HotKeyManager>(*platform_.hotKeys, [coordinator = QPointer(this)] {
            if (coordinator)
                coordinator->beginWorkflow();
        });
    connect(hotKeyManager_.get(), &HotKeyManager::heldKeysChanged, &settingsStore_,
            &SettingsStore::setHeldHotKey);
    hotKeyManager_->registerHotKey();
    checkForUpdates();
}

void AppCoordinator::configureStatusItem() {
    statusMenu_.show();
}

QCoro::Task<> AppCoordinator::checkForUpdates() {
    const QPointer coordinator(this);
    const auto manifest = co_await updateOffer_.checkForUpdate();
    if (!coordinator || isEnding_ || !manifest)
        co_return;
    publish(availableUpdate_, manifest);
    statusMenu_.offerUpdate(manifest->version);
    co_await operations_.allEnded(alertPatience);
    if (coordinator && !isEnding_)
        presentUpdateAlertIfNeeded(*manifest);
}

void AppCoordinator::presentUpdateAlertIfNeeded(const ReleaseManifest &manifest) {
    updateOffer_.presentAlertIfNeeded(manifest);
}

void AppCoordinator::openAvailableUpdate() {
    if (availableUpdate_)
        updateOffer_.openDownload(*availableUpdate_);
}

void AppCoordinator::beginWorkflow() {
    if (isEnding_)
        return;
    // A second press before the panel is there asks for the same panel.
    if (isCapturing_ && !sinceCapture_.hasExpired(captureIsLate.count()))
        return;
    captureTask();
}

QCoro::Task<> AppCoordinator::captureTask() {
    const auto operation = operations_.begin();
    const quint64 capture = ++latestCapture_;
    isCapturing_ = true;
    sinceCapture_.start();
    permissionManager_.ask();
    // While it answers.
    panel().getReady();
    permissionManager_.refresh();
    if (!permissionManager_.accessibilityGranted()) {
        const AppFailure failure = AppFailure::accessibilityPermissionRequired();
        qCInfo(log, "nothing could be captured: %s",
               qUtf8Printable(failureReason(std::make_exception_ptr(failure))));
        // Title and description stay those of the last capture.
        become(SessionState::failed(failure.errorDescription()), &SessionState::currentSession,
               &SessionState::selectedTextPreview, &SessionState::errorMessage,
               &SessionState::currentActionTitle);
    } else {
        try {
            const SelectionSessionRef session = co_await selectionController_.captureSelection(
                [this] { return panelController_ ? panelController_->stepAside() : nullptr; });
            if (capture == latestCapture_)
                captured(session);
        } catch (...) {
            if (capture == latestCapture_)
                captureFailed(std::current_exception());
        }
    }
    if (capture != latestCapture_)
        co_return;
    isCapturing_ = false;
    if (!isEnding_)
        showPanel();
}

void AppCoordinator::captured(SelectionSessionRef session) {
    qCInfo(log, "captured %lld characters of %s, by %s", qint64(session->selectedText.size()),
           session->captureScope == CaptureScope::fullField ? "the whole field" : "the selection",
           session->acquisitionMethod == SelectionAcquisitionMethod::clipboard ? "copying"
                                                                               : "accessibility");
    become(SessionState::captured(std::move(session)), &SessionState::selectedTextPreview,
           &SessionState::captureTitle, &SessionState::captureDescription,
           &SessionState::errorMessage, &SessionState::currentActionTitle,
           &SessionState::currentSession);
}

void AppCoordinator::captureFailed(const std::exception_ptr &error) {
    qCInfo(log, "nothing could be captured: %s", qUtf8Printable(failureReason(error)));
    become(SessionState::failed(userMessage(error)), &SessionState::currentSession,
           &SessionState::selectedTextPreview, &SessionState::captureDescription,
           &SessionState::captureTitle, &SessionState::errorMessage,
           &SessionState::currentActionTitle);
}

void AppCoordinator::run(const PromptAction &action) {
    if (!state_.currentSession) {
        refuse(AppFailure::noSelectionFound().errorDescription());
        return;
    }
    const LLMClient &client = llmClient_;
    transformTask(state_.currentSession, action.title(),
                  [client, prompt = action.prompt(state_.currentSession->selectedText)](
                      LLMConfiguration configuration) {
                      return client.transform(prompt, std::move(configuration));
                  });
}

void AppCoordinator::runCustomInstruction() {
    if (!state_.currentSession) {
        refuse(AppFailure::noSelectionFound().errorDescription());
        return;
    }
    const QString instruction = trimmed(state_.customInstruction);
    if (instruction.isEmpty()) {
        refuse(QStringLiteral("Add an instruction first."));
        return;
    }
    const LLMClient &client = llmClient_;
    transformTask(state_.currentSession, QStringLiteral("Generate from Prompt"),
                  [client, source = state_.currentSession->selectedText,
                   instruction](LLMConfiguration configuration) {
                      return client.generate(source, instruction, std::move(configuration));
                  });
}

QCoro::Task<> AppCoordinator::transformTask(SelectionSessionRef session, QString title,
                                            Request request) {
    const auto operation = operations_.begin();
    publish(isWorking_, true);
    become(SessionState::running(title), &SessionState::errorMessage,
           &SessionState::currentActionTitle);
    try {
        LLMConfiguration configuration = co_await settingsStore_.snapshot();
        qCInfo(log, "asking %s", qUtf8Printable(displayName(configuration.provider)));
        const QString answer = co_await request(std::move(configuration));
        qCInfo(log, "answered with %lld characters", qint64(answer.size()));
        const bool replaced =
            co_await selectionController_.replaceViaAccessibility(session, answer);
        if (!replaced)
            co_await paste(session, answer);
        qCInfo(log, "written by %s", replaced ? "accessibility" : "pasting");
    } catch (const UncertainReplacement &) {
        if (state_.currentSession == session)
            become({}, &SessionState::currentSession);
        transformFailed(std::current_exception());
        co_return;
    } catch (...) {
        transformFailed(std::current_exception());
        co_return;
    }
    publish(isWorking_, false);
    hidePanel();
}

QCoro::Task<> AppCoordinator::paste(SelectionSessionRef session, QString replacement) {
    const auto aside = panelController_ ? panelController_->stepAside() : nullptr;
    co_await selectionController_.performPasteReplacement(std::move(session),
                                                          std::move(replacement));
    if (aside)
        aside->stayAway();
}

void AppCoordinator::transformFailed(const std::exception_ptr &error) {
    qCInfo(log, "the text was not replaced: %s", qUtf8Printable(failureReason(error)));
    publish(isWorking_, false);
    refuse(userMessage(error));
}

void AppCoordinator::refuse(const QString &message) {
    become(SessionState::failed(message), &SessionState::errorMessage);
}

void AppCoordinator::requestAccessibilityAccess() {
    permissionManager_.requestAccessibilityPermission();
    if (permissionManager_.accessibilityGranted())
        beginWorkflow();
}

void AppCoordinator::openSettings() {
    windows_.showSettings();
}

void AppCoordinator::openAbout() {
    windows_.showAbout();
}

void AppCoordinator::showPanel() {
    PickerPanel &shown = panel();
    const RunningApplicationRef source = platform_.workspace->frontmostApplication();
    shown.centre(source ? platform_.workspace->windowFrame(source) : std::nullopt);
    shown.makeKeyAndOrderFront();
}

PickerPanel &AppCoordinator::panel() {
    if (!panelController_)
        panelController_ = windows_.pickerPanel(*this);
    return *panelController_;
}

void AppCoordinator::hidePanel() {
    if (panelController_)
        panelController_->orderOut();
    become({}, &SessionState::currentSession, &SessionState::currentActionTitle,
           &SessionState::errorMessage, &SessionState::selectedTextPreview,
           &SessionState::captureTitle, &SessionState::captureDescription,
           &SessionState::customInstruction);
}

void AppCoordinator::quit() {
    windows_.terminate();
}

QCoro::Task<> AppCoordinator::prepareCapture() {
    const auto operation = operations_.begin();
    co_await platform_.focusedText->prepare();
}

QCoro::Task<> AppCoordinator::endOperations(std::chrono::milliseconds limit) {
    isEnding_ = true;
    hidePanel();
    co_await operations_.allEnded(limit);
}

QList<PromptAction> AppCoordinator::actions() const {
    return settingsStore_.visibleActions();
}

void AppCoordinator::setCustomInstruction(const QString &instruction) {
    publish(state_.customInstruction, instruction);
}

bool AppCoordinator::accessibilityGranted() const {
    return permissionManager_.accessibilityGranted();
}

} // namespace quillmender
