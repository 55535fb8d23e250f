#include "ui/settings/ProviderSection.h"

#include "ui/PopUpButton.h"

#include <QSignalBlocker>

namespace quillmender {

ProviderSection::ProviderSection(SettingsStore &store, Theme &theme, QWidget *parent)
    : FormSection(theme, QStringLiteral("Provider"), parent),
      store_(store),
      provider_(new PopUpButton(theme)) {
    for (const AIProvider provider : allProviders)
        provider_->addItem(displayName(provider), int(provider));
    connect(provider_, &QComboBox::currentIndexChanged, this,
            [this] { store_.setSelectedProvider(AIProvider(provider_->currentData().toInt())); });
    addField(QStringLiteral("Active Provider"), provider_);
    addCaption(
        QStringLiteral("Quillmender sends requests through the currently selected provider."));
}

void ProviderSection::render() {
    const QSignalBlocker blocker(provider_);
    provider_->setCurrentIndex(provider_->findData(int(store_.selectedProvider())));
    // The toolkit gives a screen reader the choice as the name, which the label's text supersedes.
    provider_->setAccessibleDescription(provider_->currentText());
}

} // namespace quillmender
