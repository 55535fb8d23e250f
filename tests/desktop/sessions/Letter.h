#pragma once

#include "desktop/harness/TestApplication.h"
#include "desktop/sessions/SessionSteps.h"

#include <optional>

namespace quillmender {

/// An editor with a letter of one line, in which the word that is wrong is selected.
class Letter {
  public:
    /// What the program reads and writes it through: for the second one the editor keeps off the
    /// accessibility bus.
    enum class Route { accessibility, clipboard };

    static const QString text;   ///< with the wrong word
    static const QString mended; ///< with the right one
    static const QString wrong;
    static const QString right;

    Letter(SessionSteps &session, Route route);

    harness::TestApplication &editor() { return editor_; }

    /// The word is selected, by the keyboard.
    void selectWrong();

    /// The editor has handled every key so far and has this text, which takes the clipboard where
    /// it is not on the accessibility bus.
    void expectText(const QString &expected);

    /// Presses keys in the active editor until it shows by its selection that it handled them.
    void waitUntilEditorActs();

    /// The hot key, the panel with the word, an action whose answer waits for release().
    void askForAnswer();

    /// All of a session, to the clipboard that is back.
    void mend();

  private:
    static harness::TestApplication open(SessionSteps &session, Route route);

    SessionSteps &session_;
    harness::TestApplication editor_;
    std::optional<harness::Accessible> text_; ///< where it is on the accessibility bus
};

} // namespace quillmender
