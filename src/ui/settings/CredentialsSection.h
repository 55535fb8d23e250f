#pragma once

#include "settings/SettingsStore.h"
#include "ui/FormSection.h"

namespace quillmender {

class SecureField;
class TextField;

/// Key, model and endpoint of one provider. What is typed goes to the store at once.
class CredentialsSection : public FormSection {
    Q_OBJECT

  public:
    CredentialsSection(AIProvider provider, SettingsStore &store, Theme &theme,
                       QWidget *parent = nullptr);

    void render() override;

    /// Nothing of the key stays in the field. The next `render` shows it again.
    void forgetKey();

  private:
    AIProvider provider_;
    SettingsStore &store_;
    SecureField *apiKey_;
    TextField *model_;
    TextField *endpoint_;
};

} // namespace quillmender
