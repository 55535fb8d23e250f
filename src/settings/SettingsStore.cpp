#include "settings/SettingsStore.h"

#include "model/ActionDocuments.h"
#include "model/TextRules.h"
#include "platform/SignalWait.h"

#include <QDeadlineTimer>
#include <QPointer>

#include <algorithm>

namespace quillmender {

namespace {

QString selectedProviderKey() {
    return QStringLiteral("settings.selectedProvider");
}
QString customActionsKey() {
    return QStringLiteral("settings.customActions");
}
QString builtInActionsKey() {
    return QStringLiteral("settings.builtInActions");
}
QString keychainAccount() {
    return QStringLiteral("api-key");
}

QString modelKey(AIProvider provider) {
    return QStringLiteral("settings.%1.model").arg(rawValue(provider).toLower());
}

QString endpointKey(AIProvider provider) {
    return QStringLiteral("settings.%1.endpoint").arg(rawValue(provider).toLower());
}

QString keychainService(AIProvider provider) {
    return QStringLiteral("com.quillmender.") + rawValue(provider);
}

} // namespace

SettingsStore::SettingsStore(UserDefaults &defaults, Secrets &secrets, LoginItem &loginItem,
                             std::chrono::milliseconds keyPatience)
    : defaults_(defaults),
      keychain_(secrets),
      launchAtLoginManager_(loginItem),
      selectedProvider_(
          providerFromRawValue(defaults.string(selectedProviderKey()).value_or(QString()))
              .value_or(AIProvider::openAI)),
      customActions_(loadedCustomActions(defaults.data(customActionsKey()))),
      builtInActions_(loadedBuiltInActions(defaults.data(builtInActionsKey()))),
      keyPatience_(keyPatience) {
    for (const AIProvider provider : allProviders) {
        fields_[provider] = {
            {},
            defaults.string(modelKey(provider)).value_or(defaultModel(provider)),
            defaults.string(endpointKey(provider)).value_or(defaultEndpoint(provider)),
        };
    }
    refreshLaunchAtLoginState();
}

void SettingsStore::setSelectedProvider(AIProvider provider) {
    publish(selectedProvider_, provider);
    defaults_.setString(selectedProviderKey(), rawValue(provider));
}

void SettingsStore::setModel(AIProvider provider, const QString &model) {
    publish(fields_[provider].model, model);
    defaults_.setString(modelKey(provider), model);
}

void SettingsStore::setEndpoint(AIProvider provider, const QString &endpoint) {
    publish(fields_[provider].endpoint, endpoint);
    defaults_.setString(endpointKey(provider), endpoint);
}

void SettingsStore::setApiKey(AIProvider provider, const QString &key) {
    publish(fields_[provider].apiKey, key);
    if (isLoadingAPIKeys_)
        return;
    if (searchedAPIKeyProviders_.contains(provider))
        loadedAPIKeyProviders_.insert(provider);
    persistAPIKey(key, provider);
}

void SettingsStore::persistAPIKey(const QString &key, AIProvider provider) {
    const QString value = trimmedKey(key);
    if (value.isEmpty())
        keychain_.remove(keychainService(provider), keychainAccount());
    else
        keychain_.write(value, keychainService(provider), keychainAccount());
}

QCoro::Task<> SettingsStore::loadAPIKeyIfNeeded(AIProvider provider) {
    if (loadedAPIKeyProviders_.contains(provider) || loadingAPIKeyProviders_.contains(provider))
        co_return;
    const QPointer store(this);
    loadingAPIKeyProviders_.insert(provider);
    searchedAPIKeyProviders_.insert(provider);
    const KeychainReading reading =
        co_await keychain_.read(keychainService(provider), keychainAccount());
    if (!store)
        co_return;
    loadingAPIKeyProviders_.remove(provider);
    if (reading.wasAnswered && !loadedAPIKeyProviders_.contains(provider)) {
        isLoadingAPIKeys_ = true;
        setApiKey(provider, reading.text.value_or(QString()));
        isLoadingAPIKeys_ = false;
        loadedAPIKeyProviders_.insert(provider);
    }
    Q_EMIT apiKeySearchEnded();
}

void SettingsStore::loadAPIKeysIfNeeded() {
    for (const AIProvider provider : allProviders)
        loadAPIKeyIfNeeded(provider);
}

QCoro::Task<LLMConfiguration> SettingsStore::snapshot() {
    const AIProvider provider = selectedProvider_;
    const ProviderFields fields = fields_.at(provider);
    const QDeadlineTimer deadline(keyPatience_);
    loadAPIKeyIfNeeded(provider);
    while (loadingAPIKeyProviders_.contains(provider) &&
           !loadedAPIKeyProviders_.contains(provider) && !deadline.hasExpired())
        co_await SignalWait(this, &SettingsStore::apiKeySearchEnded,
                            std::chrono::milliseconds(deadline.remainingTime()));
    co_return LLMConfiguration{provider, trimmedKey(fields_.at(provider).apiKey),
                               trimmed(fields.model), trimmed(fields.endpoint)};
}

void SettingsStore::setBuiltInActions(const QList<BuiltInActionConfig> &actions) {
    publish(builtInActions_, actions);
    persistBuiltInActions();
}

void SettingsStore::setCustomActions(const QList<CustomAction> &actions) {
    publish(customActions_, actions);
    persistCustomActions();
}

void SettingsStore::persistBuiltInActions() {
    defaults_.setData(builtInActionsKey(), encodeBuiltInActions(builtInActions_));
}

void SettingsStore::persistCustomActions() {
    defaults_.setData(customActionsKey(), encodeCustomActions(customActions_));
}

QList<BuiltInActionConfig> SettingsStore::visibleBuiltInActions() const {
    QList<BuiltInActionConfig> visible;
    std::ranges::copy_if(builtInActions_, std::back_inserter(visible),
                         [](const BuiltInActionConfig &config) { return !config.isHidden; });
    return visible;
}

QList<BuiltInActionConfig> SettingsStore::hiddenBuiltInActionItems() const {
    QList<BuiltInActionConfig> hidden;
    std::ranges::copy_if(builtInActions_, std::back_inserter(hidden),
                         &BuiltInActionConfig::isHidden);
    return hidden;
}

QList<PromptAction> SettingsStore::visibleActions() const {
    return quillmender::visibleActions(builtInActions_, customActions_);
}

void SettingsStore::updateBuiltInAction(const BuiltInActionConfig &config) {
    QList<BuiltInActionConfig> actions = builtInActions_;
    const auto found = std::ranges::find(actions, config.action, &BuiltInActionConfig::action);
    if (found == actions.end())
        return;
    *found = config;
    setBuiltInActions(actions);
}

void SettingsStore::hideBuiltInAction(TextAction action) {
    QList<BuiltInActionConfig> actions = builtInActions_;
    const auto found = std::ranges::find(actions, action, &BuiltInActionConfig::action);
    if (found == actions.end())
        return;
    found->isHidden = true;
    setBuiltInActions(actions);
}

void SettingsStore::restoreAllBuiltInActions() {
    setBuiltInActions(starterActions());
}

void SettingsStore::addCustomAction(const QString &title, const QString &promptTemplate) {
    QList<CustomAction> actions = customActions_;
    actions.append({QUuid::createUuid(), title, promptTemplate});
    setCustomActions(actions);
}

void SettingsStore::removeCustomAction(const QUuid &id) {
    QList<CustomAction> actions = customActions_;
    actions.removeIf([&id](const CustomAction &action) { return action.id == id; });
    setCustomActions(actions);
}

void SettingsStore::refreshLaunchAtLoginState() {
    LoginItem &service = launchAtLoginManager_.service();
    isRefreshingLaunchAtLogin_ = true;
    setLaunchAtLoginEnabled(service.status() == LoginItemStatus::enabled);
    publish(launchAtLoginStatusMessage_, LaunchAtLoginManager::statusMessage(service.status()));
    isRefreshingLaunchAtLogin_ = false;
}

void SettingsStore::setLaunchAtLoginEnabled(bool enabled) {
    publish(launchAtLoginEnabled_, enabled);
    if (!isRefreshingLaunchAtLogin_)
        updateLaunchAtLoginRegistration(enabled);
}

void SettingsStore::updateLaunchAtLoginRegistration(bool isEnabled) {
    LoginItem &service = launchAtLoginManager_.service();
    const std::optional<QString> error =
        isEnabled ? service.registerItem() : service.unregisterItem();
    if (!error) {
        publish(launchAtLoginStatusMessage_, LaunchAtLoginManager::statusMessage(service.status()));
        return;
    }
    isRefreshingLaunchAtLogin_ = true;
    setLaunchAtLoginEnabled(service.status() == LoginItemStatus::enabled);
    isRefreshingLaunchAtLogin_ = false;
    publish(launchAtLoginStatusMessage_, error);
}

QString SettingsStore::hotKeyDisplay() const {
    return quillmender::hotKeyDisplay(heldHotKey_.value_or(askedHotKey));
}

std::optional<QString> SettingsStore::hotKeyStatusMessage() const {
    if (heldHotKey_)
        return std::nullopt;
    return QStringLiteral("The shortcut does not work at the moment; another program may be using "
                          "these keys. Use Transform in the status menu instead.");
}

void SettingsStore::setHeldHotKey(std::optional<QKeyCombination> keys) {
    publish(heldHotKey_, keys);
}

} // namespace quillmender
