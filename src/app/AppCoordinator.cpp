#include "app/AppCoordinator.h"

#include "app/HotKeyManager.h"
#include "app/TextPreview.h"
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

// Of the status menu.
constexpr int updateItem = 2;
// An alert takes the keyboard, which a session may be about to use.
constexpr std::chrono::minutes alertPatience(1);
// Even a capture from an application that hangs has shown the panel by then.
constexpr std::chrono::milliseconds captureIsLate(1500);

QString selectedTextTitle() {
    return QStringLiteral("Selected Text");
}

} // namespace

AppCoordinator::AppCoordinator(Platform &platform, LLMClient llmClient, UpdateChecker updateChecker,
                               ReleaseSource release, WindowFactory windows)
    : platform_(platform),
      windows_(std::move(windows)),
      captureTitle_(selectedTextTitle()),
      settingsStore_(*platform.userDefaults, *platform.secretItems, *platform.loginItem),
      permissionManager_(*platform.accessibility, *platform.workspace),
      pasteboardManager_(*platform.pasteboard, *platform.keyEvents),
      selectionController_(pasteboardManager_, *platform.accessibility, *platform.workspace,
                           *platform.clock),
      llmClient_(llmClient),
      updateChecker_(updateChecker),
      release_(std::move(release)) {
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
    hotKeyManager_->registerHotKey();
    checkForUpdates();
}

void AppCoordinator::configureStatusItem() {
    StatusItem item;
    item.symbol = QStringLiteral("text.quote");
    item.accessibilityDescription = QStringLiteral("Quillmender");
    item.toolTip = QStringLiteral("Quillmender");
    item.menu = {
        {QStringLiteral("Transform"), QStringLiteral(" "), controlModifier | optionModifier, false,
         [this] { beginWorkflow(); }},
        {QStringLiteral("Settings"), QStringLiteral(","), commandModifier, false,
         [this] { openSettings(); }},
        {QStringLiteral("Download Latest Version"), {}, 0, true, [this] { openAvailableUpdate(); }},
        {QStringLiteral("About"), {}, 0, false, [this] { openAbout(); }},
        {QStringLiteral("Quit Quillmender"), QStringLiteral("q"), commandModifier, false,
         [this] { quit(); }},
    };
    platform_.presence->showStatusItem(item);
}

QCoro::Task<> AppCoordinator::checkForUpdates() {
    const QPointer coordinator(this);
    const auto manifest =
        co_await updateChecker_.checkForUpdate(release_.currentVersion, release_.manifestURL);
    if (!coordinator || isEnding_ || !manifest)
        co_return;
    publish(availableUpdate_, manifest);
    platform_.presence->updateStatusMenuItem(
        updateItem, QStringLiteral("Download Quillmender ") + manifest->version, false);
    co_await operations_.allEnded(alertPatience);
    if (coordinator && !isEnding_)
        presentUpdateAlertIfNeeded(*manifest);
}

void AppCoordinator::presentUpdateAlertIfNeeded(const ReleaseManifest &manifest) {
    if (hasPresentedUpdateAlert_)
        return;
    hasPresentedUpdateAlert_ = true;
    const Alert alert{
        QStringLiteral("Quillmender %1 is available").arg(manifest.version),
        QStringLiteral("A newer version of Quillmender has been published. Do you want to download "
                       "it now?"),
        {QStringLiteral("Download"), QStringLiteral("Later")}};
    windows_.showAlert(alert, [this, url = manifest.downloadURL](int button) {
        if (button == 0)
            platform_.workspace->openUrl(url);
    });
}

void AppCoordinator::openAvailableUpdate() {
    if (availableUpdate_)
        platform_.workspace->openUrl(availableUpdate_->downloadURL);
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
    permissionManager_.refresh();
    if (!permissionManager_.accessibilityGranted()) {
        publish(currentSession_, nullptr);
        publish(selectedTextPreview_, QString());
        publish(errorMessage_, AppFailure::accessibilityPermissionRequired().errorDescription());
        publish(currentActionTitle_, QString());
    } else {
        try {
            auto selection = selectionController_.captureSelection();
            // The first panel is made while other programs answer.
            panel();
            const SelectionSessionRef session = co_await selection;
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
    const bool isFullField = session->captureScope == CaptureScope::fullField;
    qCInfo(log, "captured %lld characters of %s, by %s", qint64(session->selectedText.size()),
           isFullField ? "the whole field" : "the selection",
           session->acquisitionMethod == SelectionAcquisitionMethod::clipboard ? "copying"
                                                                               : "accessibility");
    publish(selectedTextPreview_, textPreview(session->selectedText));
    publish(captureTitle_, isFullField ? QStringLiteral("Captured Field") : selectedTextTitle());
    publish(captureDescription_,
            isFullField ? QStringLiteral("No selection was found, so Quillmender captured the full "
                                         "focused text field.")
                        : QStringLiteral("Using only the highlighted text."));
    publish(errorMessage_, std::nullopt);
    publish(currentActionTitle_, QString());
    currentSession_ = std::move(session);
}

void AppCoordinator::captureFailed(const std::exception_ptr &error) {
    qCInfo(log, "nothing could be captured");
    currentSession_ = nullptr;
    publish(selectedTextPreview_, QString());
    publish(captureDescription_, QString());
    publish(captureTitle_, selectedTextTitle());
    publish(errorMessage_, userMessage(error));
    publish(currentActionTitle_, QString());
}

void AppCoordinator::run(const PromptAction &action) {
    if (!currentSession_) {
        publish(errorMessage_, AppFailure::noSelectionFound().errorDescription());
        return;
    }
    const LLMClient &client = llmClient_;
    transformTask(currentSession_, action.title(),
                  [client, prompt = action.prompt(currentSession_->selectedText)](
                      LLMConfiguration configuration) {
                      return client.transform(prompt, std::move(configuration));
                  });
}

void AppCoordinator::runCustomInstruction() {
    if (!currentSession_) {
        publish(errorMessage_, AppFailure::noSelectionFound().errorDescription());
        return;
    }
    const QString instruction = trimmed(customInstruction_);
    if (instruction.isEmpty()) {
        publish(errorMessage_, QStringLiteral("Add an instruction first."));
        return;
    }
    const LLMClient &client = llmClient_;
    transformTask(currentSession_, QStringLiteral("Generate from Prompt"),
                  [client, source = currentSession_->selectedText,
                   instruction](LLMConfiguration configuration) {
                      return client.generate(source, instruction, std::move(configuration));
                  });
}

QCoro::Task<> AppCoordinator::transformTask(SelectionSessionRef session, QString title,
                                            Request request) {
    const auto operation = operations_.begin();
    publish(isWorking_, true);
    publish(errorMessage_, std::nullopt);
    publish(currentActionTitle_, title);
    try {
        LLMConfiguration configuration = co_await settingsStore_.snapshot();
        qCInfo(log, "asking %s", qUtf8Printable(displayName(configuration.provider)));
        const QString answer = co_await request(std::move(configuration));
        qCInfo(log, "answered with %lld characters", qint64(answer.size()));
        const bool replaced =
            co_await selectionController_.replaceViaAccessibility(session, answer);
        if (!replaced)
            co_await selectionController_.performPasteReplacement(session, answer);
        qCInfo(log, "replaced by %s", replaced ? "accessibility" : "pasting");
    } catch (const UncertainReplacement &) {
        qCInfo(log, "it is not known whether the text was replaced");
        if (currentSession_ == session)
            publish(currentSession_, nullptr);
        transformFailed(std::current_exception());
        co_return;
    } catch (...) {
        transformFailed(std::current_exception());
        co_return;
    }
    publish(isWorking_, false);
    hidePanel();
}

void AppCoordinator::transformFailed(const std::exception_ptr &error) {
    qCInfo(log, "the text was not replaced");
    publish(isWorking_, false);
    publish(errorMessage_, userMessage(error));
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
    publish(currentSession_, nullptr);
    publish(currentActionTitle_, QString());
    publish(errorMessage_, std::nullopt);
    publish(selectedTextPreview_, QString());
    publish(captureTitle_, selectedTextTitle());
    publish(captureDescription_, QString());
    publish(customInstruction_, QString());
}

void AppCoordinator::quit() {
    windows_.terminate();
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
    publish(customInstruction_, instruction);
}

bool AppCoordinator::accessibilityGranted() const {
    return permissionManager_.accessibilityGranted();
}

} // namespace quillmender
