#include "ui/StatusLabel.h"

#include "ui/Announcer.h"

namespace quillmender {

StatusLabel::StatusLabel(Theme &theme, TextStyle style, Tone tone, QWidget *parent)
    : TextLabel(theme, style, tone, parent),
      announcer_(new Announcer(this)) {}

void StatusLabel::tell(const QString &text) {
    const bool isNews = text != this->text();
    show(text);
    setVisible(!text.isEmpty());
    // A window that has just been opened has no news.
    if (isNews && !text.isEmpty() && isActiveWindow())
        repeat();
}

void StatusLabel::repeat() {
    announcer_->say(text());
}

} // namespace quillmender
