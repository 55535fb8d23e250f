#include "desktop/sessions/TextKeys.h"

#include <QTextBoundaryFinder>

#include <X11/keysym.h>

namespace quillmender {

namespace {

int countCharacters(const QString &text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

} // namespace

void selectByKeyboard(harness::InputDriver &input, const QString &line, const QString &word) {
    const QString after = line.mid(line.indexOf(word) + word.size());
    input.chord({XK_End});
    for (int i = countCharacters(after); i > 0; --i)
        input.chord({XK_Left});
    input.press(XK_Shift_L);
    for (int i = countCharacters(word); i > 0; --i)
        input.chord({XK_Left});
    input.release(XK_Shift_L);
}

} // namespace quillmender
