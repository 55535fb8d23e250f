#pragma once

#include "desktop/harness/UserInput.h"

namespace quillmender {

/// Selects the word in a text of one line that has the keyboard, by arrow keys from its end.
void selectByKeyboard(harness::UserInput &input, const QString &line, const QString &word);

} // namespace quillmender
