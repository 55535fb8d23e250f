#include "ui/settings/ShortcutSection.h"

#include "ui/TextLabel.h"

namespace quillmender {

ShortcutSection::ShortcutSection(const SettingsStore &store, Theme &theme, QWidget *parent)
    : FormSection(theme, QStringLiteral("Shortcut"), parent) {
    auto *shortcut = new TextLabel(theme, TextStyle::body, TextLabel::Tone::secondary, card());
    shortcut->show(store.hotKeyDisplay());
    addField(QStringLiteral("Invoke Quillmender"), shortcut);
    addCaption(QStringLiteral(
        "Select text in any app, then press the shortcut to open the action picker."));
}

} // namespace quillmender
