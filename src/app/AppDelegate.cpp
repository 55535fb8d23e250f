#include "app/AppDelegate.h"

#include "ui/AboutWindowController.h"
#include "ui/ActionPanelController.h"
#include "ui/AlertWindow.h"
#include "ui/ReadyPanel.h"
#include "ui/SettingsWindowController.h"
#include "ui/style/Style.h"

#include <QApplication>

namespace quillmender {

AppDelegate::AppDelegate(std::unique_ptr<Platform> platform, const QUrl &manifestURL,
                         WarmUp::Pace warmUp)
    : platform_(std::move(platform)),
      coordinator_(*platform_, LLMClient(transport_), UpdateChecker(transport_),
                   {AppMetadata::version(platform_->bundleVersion), manifestURL}, windows()),
      warmUp_([this] { return isQuiet(); }, [this] { return prepareMore(); }, warmUp) {}

AppDelegate::~AppDelegate() {
    // The style is the toolkit's, and stays.
    if (theme_)
        Style::installed().setBlending({});
}

InstanceClaim AppDelegate::applicationDidFinishLaunching() {
    InstanceClaim claim =
        platform_->instance->claim([this](const QString &action) { perform(action); });
    if (claim.outcome != InstanceClaim::Outcome::held)
        return claim;
    platform_->ownWindows->setAccessoryPolicy();
    coordinator_.start();
    warmUp_.start();
    return claim;
}

void AppDelegate::perform(const QString &action) {
    if (action == QLatin1String(instanceAction::transform))
        coordinator_.beginWorkflow();
    else if (action == QLatin1String(instanceAction::about))
        coordinator_.openAbout();
    else if (action == QLatin1String(instanceAction::quit))
        coordinator_.quit();
    else if (action == QLatin1String(instanceAction::activate) ||
             action == QLatin1String(instanceAction::settings))
        coordinator_.openSettings();
}

WindowFactory AppDelegate::windows() {
    WindowFactory windows;
    windows.pickerPanel = [this](ActionPickerModel &model) -> std::unique_ptr<PickerPanel> {
        warmUp_.stop();
        if (!readyPanel_)
            return std::make_unique<ActionPanelController>(model, theme(), *platform_->ownWindows);
        const auto ready = std::move(readyPanel_);
        return std::make_unique<ActionPanelController>(*ready, *platform_->ownWindows);
    };
    windows.showSettings = [this] { showSettings(); };
    windows.showAbout = [this] { showAbout(); };
    windows.showAlert = [this](const Alert &alert, std::function<void(int)> answered) {
        showAlert(alert, std::move(answered));
    };
    windows.terminate = [this] {
        if (!isTerminating_)
            terminate();
    };
    return windows;
}

void AppDelegate::showSettings() {
    if (!settingsWindow_)
        settingsWindow_ = std::make_unique<SettingsWindowController>(
            coordinator_.settingsStore(), coordinator_.permissionManager(), theme(),
            *platform_->ownWindows, platform_->missing);
    settingsWindow_->centre();
    settingsWindow_->makeKeyAndOrderFront();
}

void AppDelegate::showAbout() {
    if (!aboutWindow_)
        aboutWindow_ = std::make_unique<AboutWindowController>(
            AppMetadata::version(platform_->bundleVersion), theme(), *platform_->ownWindows);
    aboutWindow_->centre();
    aboutWindow_->makeKeyAndOrderFront();
}

void AppDelegate::showAlert(const Alert &alert, std::function<void(int)> answered) {
    alertWindow_ = std::make_unique<AlertWindow>(
        alert,
        [this, answered = std::move(answered)](int button) {
            answered(button);
            // It is still on the stack.
            alertWindow_.release()->deleteLater();
        },
        theme(), *platform_->ownWindows);
    alertWindow_->makeKeyAndOrderFront();
}

Theme &AppDelegate::theme() {
    if (!theme_) {
        theme_ = std::make_unique<Theme>(*platform_->appearance, *platform_->symbols);
        Style::installed().setBlending(
            [windows = platform_->ownWindows.get()] { return windows->areBlended(); });
    }
    return *theme_;
}

// Under an open menu of the status item its style would change.
bool AppDelegate::isQuiet() const {
    return coordinator_.isQuiet() && !QApplication::activePopupWidget();
}

bool AppDelegate::prepareMore() {
    if (platform_->prepareMore())
        return true;
    if (!readyPanel_)
        readyPanel_ = std::make_unique<ReadyPanel>(coordinator_, theme(), *platform_->ownWindows);
    if (readyPanel_->prepareMore())
        return true;
    coordinator_.prepareCapture();
    platform_->giveMemoryBack();
    return false;
}

QCoro::Task<> AppDelegate::terminate() {
    isTerminating_ = true;
    warmUp_.stop();
    constexpr std::chrono::seconds operationsLimit(3);
    platform_->clock->cancelAll();
    transport_.cancelAll();
    // What is under way first puts the user's text and pasteboard in order.
    co_await coordinator_.endOperations(operationsLimit);
    co_await platform_->pasteboard->handOver();
    // Not quit(), which would ask again.
    QCoreApplication::exit();
}

} // namespace quillmender
