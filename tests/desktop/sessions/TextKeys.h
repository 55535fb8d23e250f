#pragma once

#include "desktop/harness/InputDriver.h"

namespace quillmender {

/// Selects the word in a text of one line that has the keyboard, by arrow keys from its end.
void selectByKeyboard(harness::InputDriver &input, const QString &line, const QString &word);

} // namespace quillmender
