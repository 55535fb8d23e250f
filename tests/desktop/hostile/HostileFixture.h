#pragma once

#include "desktop/hostile/Responsiveness.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"

#include <optional>

namespace quillmender {

inline const QString wrong = QStringLiteral("recieve");
inline const QString right = QStringLiteral("receive");
inline const QString letter = QStringLiteral("Hello, you recieve it.");
inline const QString mended = QStringLiteral("Hello, you receive it.");

inline const QString noFrontmost =
    QStringLiteral("Quillmender could not determine the frontmost app.");
inline const QString nothingSelected =
    QStringLiteral("Select some text, or place the cursor inside a normal text field so "
                   "Quillmender can capture the whole field when possible.");
inline const QString notReplaced =
    QStringLiteral("Quillmender could not replace the selected text back in the source app.");

/// Sessions with other programs that misbehave. At the end of each test the program has never left
/// the bus without an answer for longer than 300 ms, give or take what the machine itself does.
class HostileFixture : public SessionFixture {
  protected:
    enum class Route { accessibility, clipboard };

    void start() override;
    void start(const harness::Desktop::Options &options);
    /// For a test that starts desktop and program itself.
    void watchResponsiveness() { responsiveness_.emplace(desktop()); }

    /// Mousepad with the letter and the wrong word selected. For the second route it keeps off the
    /// accessibility bus.
    harness::TestApplication &openLetter(Route route);
    harness::TestApplication &source() { return *source_; }
    /// The source is done with; the next letter is opened by another process.
    void forgetSource();

    /// The hot key, the panel with the word, an action whose answer waits for release().
    void askForAnswer();

    /// Waits until the answer is on the clipboard, to be pasted.
    void waitForTemporaryText();

    /// Waits until what was borrowed is no longer there.
    void waitUntilClipboardIsBack();

    bool isPanelGone();
    /// Waits for the end of the session: true when the panel has gone, since the text is replaced,
    /// false when it shows that the text could not be replaced.
    bool isSessionReplaced();

    /// The source has handled every key so far and has this text, which takes the clipboard where
    /// it is not on the accessibility bus.
    void expectText(const QString &text);

    /// Presses keys in the active source until it shows by its selection that it handled them.
    void waitUntilSourceActs();

    void sendToWindowManager(xcb_window_t window, const char *type, quint32 first,
                             quint32 second = 0);

    void expectNeverBlocked();
    /// For a test that ends the program.
    void forgetResponsiveness() { responsiveness_.reset(); }

    void TearDown() override;

  private:
    std::optional<harness::TestApplication> source_;
    std::optional<harness::Accessible> text_;
    std::optional<Responsiveness> responsiveness_;
};

} // namespace quillmender
