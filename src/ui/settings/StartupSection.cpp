#include "ui/settings/StartupSection.h"

#include "ui/PushButton.h"
#include "ui/StatusLabel.h"
#include "ui/ToggleSwitch.h"

namespace quillmender {

StartupSection::StartupSection(SettingsStore &store, Theme &theme, QWidget *parent)
    : FormSection(theme, QStringLiteral("Startup"), parent),
      store_(store),
      launchAtLogin_(
          new ToggleSwitch(theme, QStringLiteral("Launch Quillmender when I log in"), card())),
      status_(new StatusLabel(theme, TextStyle::caption, TextLabel::Tone::secondary, card())) {
    auto *openSettings = new PushButton(theme, QStringLiteral("Open Login Items Settings"),
                                        PushButton::Prominence::standard, card());
    connect(launchAtLogin_, &QCheckBox::toggled, this,
            [this](bool enabled) { store_.setLaunchAtLoginEnabled(enabled); });
    connect(openSettings, &QPushButton::clicked, this,
            [this] { store_.launchAtLoginManager().service().openSystemSettings(); });
    // The switch itself ends where the fields end.
    addRow(launchAtLogin_, ToggleSwitch::outerMargin);
    addRow(status_);
    addButtons({openSettings});
}

void StartupSection::render() {
    const QSignalBlocker blocker(launchAtLogin_);
    launchAtLogin_->setChecked(store_.launchAtLoginEnabled());
    status_->tell(store_.launchAtLoginStatusMessage().value_or(QString()));
}

} // namespace quillmender
