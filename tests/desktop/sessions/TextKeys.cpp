#include "desktop/sessions/TextKeys.h"

#include "desktop/harness/CharacterCount.h"

#include <X11/keysym.h>

namespace quillmender {

void selectByKeyboard(harness::UserInput &input, const QString &line, const QString &word) {
    const QString after = line.mid(line.indexOf(word) + word.size());
    input.chord({XK_End});
    for (int i = harness::countCharacters(after); i > 0; --i)
        input.chord({XK_Left});
    input.press(XK_Shift_L);
    for (int i = harness::countCharacters(word); i > 0; --i)
        input.chord({XK_Left});
    input.release(XK_Shift_L);
}

} // namespace quillmender
