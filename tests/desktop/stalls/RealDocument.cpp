#include "desktop/stalls/RealDocument.h"

#include "desktop/harness/Waiter.h"

#include <X11/keysym.h>

namespace quillmender {

using harness::waitUntil;

RealDocument::RealDocument(harness::Desktop &desktop, harness::TestApplication application,
                           const QString &text)
    : desktop_(desktop),
      application_(std::move(application)),
      text_(application_.focusedText()) {
    // An editor that still loads its file would drop a selection.
    waitUntil([&] { return text_.text() == text; }, QStringLiteral("the text is open"));
}

void RealDocument::prepare(const QString &text, int start, int end, const QList<Stall> &) {
    application_.activate();
    waitUntil([&] { return text_.hasState(harness::AccessibleState::focused); },
              QStringLiteral("the text has the focus"));
    text_.setText(text);
    waitUntil([&] { return text_.text() == text; }, QStringLiteral("the text is there"));
    if (start == end)
        text_.setCaretOffset(start);
    else
        text_.select(start, end);
    waitUntil([&] { return text_.selectedText() == text.mid(start, end - start); },
              QStringLiteral("it is selected"));
}

void RealDocument::comeToRest() {
    application_.activate();
    // The keys' effect shows that all that came before them is done. In a text that is gone
    // altogether nothing can be selected, and nothing more could spoil it.
    desktop_.input().chord({XK_Home});
    if (text_.text().isEmpty())
        return;
    for (int selected = 1; selected <= 2; ++selected) {
        desktop_.input().chord({XK_Shift_L, XK_Right});
        waitUntil([&] { return text_.selection() == std::pair(0, selected); },
                  QStringLiteral("the editor handles its keys"));
    }
}

} // namespace quillmender
