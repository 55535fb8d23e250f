#pragma once

#include "ui/TextLabel.h"

namespace quillmender {

class Announcer;

/// A label that says how something stands. Screen readers read it like any text; a change under the
/// eyes of the user is announced as well.
class StatusLabel : public TextLabel {
    Q_OBJECT

  public:
    StatusLabel(Theme &theme, TextStyle style, Tone tone, QWidget *parent = nullptr);

    /// Shows the text, or nothing at all when it is empty.
    void tell(const QString &text);

    /// Announces what it shows, for somebody who has asked.
    void repeat();

  private:
    Announcer *announcer_;
};

} // namespace quillmender
