#pragma once

#include "model/AIProvider.h"
#include "model/BuiltInActionConfig.h"
#include "model/CustomAction.h"
#include "model/LLMConfiguration.h"
#include "model/Observable.h"
#include "model/PromptAction.h"
#include "platform/UserDefaults.h"
#include "settings/HotKeyDisplay.h"
#include "settings/KeychainStore.h"
#include "settings/LaunchAtLoginManager.h"

#include <QList>
#include <QSet>

#include <chrono>
#include <map>

namespace quillmender {

/// Everything that the user configures. Plain settings are read once and written the moment they
/// change; API keys live in the keychain only and are read when a provider's key is first needed.
/// Nothing here reports an error: what cannot be read has its default.
class SettingsStore : public Observable {
    Q_OBJECT

  public:
    /// A snapshot waits `keyPatience` at most for the keychain.
    SettingsStore(UserDefaults &defaults, Secrets &secrets, LoginItem &loginItem,
                  std::chrono::milliseconds keyPatience = std::chrono::seconds(20));

    AIProvider selectedProvider() const { return selectedProvider_; }
    void setSelectedProvider(AIProvider provider);

    /// Each as typed; a request takes them trimmed, through `snapshot`.
    QString apiKey(AIProvider provider) const { return fields_.at(provider).apiKey; }
    QString model(AIProvider provider) const { return fields_.at(provider).model; }
    QString endpoint(AIProvider provider) const { return fields_.at(provider).endpoint; }

    /// Replaces the provider's keychain item, or deletes it when nothing but white space is left.
    void setApiKey(AIProvider provider, const QString &key);
    void setModel(AIProvider provider, const QString &model);
    void setEndpoint(AIProvider provider, const QString &endpoint);

    /// The selected provider's settings, trimmed. May read that provider's key from the keychain:
    /// completes when it has answered, so at once when the key is known.
    QCoro::Task<LLMConfiguration> snapshot();

    /// Reads every provider's key that was not read yet in this run. Returns at once; a key is
    /// published when the keychain has answered, unless the user has typed another one meanwhile.
    /// A keychain that could not be asked, or stayed locked, is asked again the next time.
    void loadAPIKeysIfNeeded();

    const QList<BuiltInActionConfig> &builtInActions() const { return builtInActions_; }
    void setBuiltInActions(const QList<BuiltInActionConfig> &actions);
    const QList<CustomAction> &customActions() const { return customActions_; }
    void setCustomActions(const QList<CustomAction> &actions);

    QList<BuiltInActionConfig> visibleBuiltInActions() const;
    QList<BuiltInActionConfig> hiddenBuiltInActionItems() const;
    /// The visible built-in actions, then the custom ones.
    QList<PromptAction> visibleActions() const;

    void updateBuiltInAction(const BuiltInActionConfig &config);
    void hideBuiltInAction(TextAction action);
    void restoreAllBuiltInActions();
    void addCustomAction(const QString &title, const QString &promptTemplate);
    void removeCustomAction(const QUuid &id);

    bool launchAtLoginEnabled() const { return launchAtLoginEnabled_; }
    void setLaunchAtLoginEnabled(bool enabled);
    const std::optional<QString> &launchAtLoginStatusMessage() const {
        return launchAtLoginStatusMessage_;
    }
    void refreshLaunchAtLoginState();
    LaunchAtLoginManager &launchAtLoginManager() { return launchAtLoginManager_; }

    /// The keys of the hot key: those that are held, those that were asked for while none are.
    QString hotKeyDisplay() const;
    /// Present while the hot key does nothing.
    std::optional<QString> hotKeyStatusMessage() const;
    /// Until the first call the keys count as held.
    void setHeldHotKey(std::optional<QKeyCombination> keys);

  Q_SIGNALS:
    void apiKeySearchEnded();

  private:
    struct ProviderFields {
        QString apiKey;
        QString model;
        QString endpoint;
    };

    QCoro::Task<> loadAPIKeyIfNeeded(AIProvider provider);
    void persistAPIKey(const QString &key, AIProvider provider);
    void persistBuiltInActions();
    void persistCustomActions();
    void updateLaunchAtLoginRegistration(bool isEnabled);

    UserDefaults &defaults_;
    KeychainStore keychain_;
    LaunchAtLoginManager launchAtLoginManager_;
    AIProvider selectedProvider_;
    std::map<AIProvider, ProviderFields> fields_;
    QList<CustomAction> customActions_;
    QList<BuiltInActionConfig> builtInActions_;
    bool launchAtLoginEnabled_ = false;
    std::optional<QString> launchAtLoginStatusMessage_;
    std::optional<QKeyCombination> heldHotKey_ = askedHotKey;
    std::chrono::milliseconds keyPatience_;
    QSet<AIProvider> loadedAPIKeyProviders_;
    QSet<AIProvider> loadingAPIKeyProviders_;  ///< a search is under way
    QSet<AIProvider> searchedAPIKeyProviders_; ///< what is typed now is newer than the stored key
    bool isLoadingAPIKeys_ = false;
    bool isRefreshingLaunchAtLogin_ = false;
};

} // namespace quillmender
