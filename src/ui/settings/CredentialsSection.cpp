#include "ui/settings/CredentialsSection.h"

#include "ui/SecureField.h"

namespace quillmender {

namespace {

struct Texts {
    QString apiKey;
    QString model;
    QString endpoint;
    QString caption;
};

Texts textsOf(AIProvider provider) {
    switch (provider) {
    case AIProvider::openAI:
        return {QStringLiteral("OpenAI API Key"),
                QStringLiteral("OpenAI Model"),
                QStringLiteral("OpenAI Endpoint"),
                {}};
    case AIProvider::anthropic:
        return {QStringLiteral("Anthropic API Key"),
                QStringLiteral("Claude Model"),
                QStringLiteral("Anthropic Endpoint"),
                {}};
    case AIProvider::gemini:
        return {QStringLiteral("Gemini API Key"), QStringLiteral("Gemini Model"),
                QStringLiteral("Gemini Base URL"),
                QStringLiteral("For Gemini, use the models base URL. Quillmender appends "
                               "`/<model>:generateContent` automatically.")};
    }
    return {};
}

} // namespace

CredentialsSection::CredentialsSection(AIProvider provider, SettingsStore &store, Theme &theme,
                                       QWidget *parent)
    : FormSection(theme, displayName(provider), parent),
      provider_(provider),
      store_(store),
      apiKey_(new SecureField(theme)),
      model_(new TextField(theme)),
      endpoint_(new TextField(theme)) {
    const Texts texts = textsOf(provider);
    connect(apiKey_, &TextField::edited, this,
            [this](const QString &text) { store_.setApiKey(provider_, text); });
    connect(model_, &TextField::edited, this,
            [this](const QString &text) { store_.setModel(provider_, text); });
    connect(endpoint_, &TextField::edited, this,
            [this](const QString &text) { store_.setEndpoint(provider_, text); });
    addField(texts.apiKey, apiKey_);
    addField(texts.model, model_);
    addField(texts.endpoint, endpoint_);
    if (!texts.caption.isEmpty())
        addCaption(texts.caption);
}

void CredentialsSection::render() {
    apiKey_->render(store_.apiKey(provider_));
    model_->render(store_.model(provider_));
    endpoint_->render(store_.endpoint(provider_));
}

void CredentialsSection::forgetKey() {
    apiKey_->forget();
}

} // namespace quillmender
