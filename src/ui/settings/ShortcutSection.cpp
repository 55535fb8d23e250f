#include "ui/settings/ShortcutSection.h"

#include "ui/StatusLabel.h"
#include "ui/settings/CopyableLines.h"

namespace quillmender {

ShortcutSection::ShortcutSection(const SettingsStore &store, const Lack &lack, Theme &theme,
                                 QWidget *parent)
    : FormSection(theme, QStringLiteral("Shortcut"), parent),
      store_(store),
      keys_(new TextLabel(theme, TextStyle::body, TextLabel::Tone::secondary, card())),
      status_(new StatusLabel(theme, TextStyle::caption, TextLabel::Tone::error, card())),
      lack_(lack.sentence) {
    keys_->show(store.hotKeyDisplay());
    addField(QStringLiteral("Invoke Quillmender"), keys_);
    addRow(status_);
    if (!lack.remedy.isEmpty())
        remedy_.append(addCaption(lack.remedy));
    if (!lack.lines.isEmpty()) {
        remedy_.append(new CopyableLines(theme, lack.lines, card()));
        addRow(remedy_.constLast());
    }
    addCaption(QStringLiteral(
        "Select text in any app, then press the shortcut to open the action picker."));
}

void ShortcutSection::render() {
    keys_->show(store_.hotKeyDisplay());
    const std::optional<QString> trouble = store_.hotKeyStatusMessage();
    status_->tell(trouble && !lack_.isEmpty() ? lack_ : trouble.value_or(QString()));
    for (QWidget *part : remedy_)
        part->setVisible(trouble.has_value());
}

} // namespace quillmender
