#pragma once

#include "settings/SettingsStore.h"
#include "ui/FormSection.h"

namespace quillmender {

class StatusLabel;
class ToggleSwitch;

/// Launch at login, and what the system says of it.
class StartupSection : public FormSection {
    Q_OBJECT

  public:
    StartupSection(SettingsStore &store, Theme &theme, QWidget *parent = nullptr);

    void render() override;

  private:
    SettingsStore &store_;
    ToggleSwitch *launchAtLogin_;
    StatusLabel *status_;
};

} // namespace quillmender
