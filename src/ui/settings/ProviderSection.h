#pragma once

#include "settings/SettingsStore.h"
#include "ui/FormSection.h"

namespace quillmender {

class PopUpButton;

/// Which provider requests go to.
class ProviderSection : public FormSection {
    Q_OBJECT

  public:
    ProviderSection(SettingsStore &store, Theme &theme, QWidget *parent = nullptr);

    void render() override;

  private:
    SettingsStore &store_;
    PopUpButton *provider_;
};

} // namespace quillmender
