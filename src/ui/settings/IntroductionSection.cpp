#include "ui/settings/IntroductionSection.h"

#include "ui/TextLabel.h"

namespace quillmender {

IntroductionSection::IntroductionSection(Theme &theme, QWidget *parent)
    : FormSection(theme, QString(), parent) {
    auto *text = new TextLabel(theme, TextStyle::body, TextLabel::Tone::primary, card());
    text->show(QStringLiteral(
        "Start by choosing your provider and adding its API key. After that, you can keep the "
        "starter actions, edit them, remove them, or create your own custom actions."));
    addRow(text);
}

} // namespace quillmender
