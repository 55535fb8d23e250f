#include "ui/settings/SecuritySection.h"

namespace quillmender {

SecuritySection::SecuritySection(Theme &theme, QWidget *parent)
    : FormSection(theme, QStringLiteral("Security"), parent) {
    addCaption(QStringLiteral(
        "API keys are loaded from your macOS keychain when you open Settings or use a configured "
        "provider. Provider selection, models, endpoints, and actions are stored locally. Launch "
        "at login is managed by macOS Login Items."));
}

} // namespace quillmender
