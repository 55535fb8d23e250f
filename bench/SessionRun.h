#pragma once

#include "bench/Editor.h"
#include "desktop/harness/ProductProcess.h"
#include "support/LoopbackServer.h"

#include <atomic>
#include <functional>
#include <optional>

namespace quillmender::bench {

class PasteField;
class Stage;

/// Whole sessions with the program, one after another in one process: capture, action by a click,
/// answer of a provider on the loopback, write-back.
class SessionRun {
  public:
    struct Times {
        double captureMs;   ///< hot key to panel painted
        double requestMs;   ///< mouse button pressed to request received
        double writeBackMs; ///< answer sent to text in the editor
        TimePoint answered; ///< when the answer was about to be sent
    };

    explicit SessionRun(Stage &stage);

    /// The editor holds the text, all of it selected; the provider answers with the other.
    Times run(Editor &editor, const QString &text, const QString &answer);

    /// The same with what the field holds.
    Times run(PasteField &field, const QString &answer);

    test::LoopbackServer &provider() { return provider_; }

  private:
    Times play(harness::WindowId editor, const QString &answer,
               const std::function<TimePoint()> &waitForText);
    double showPanelMs();
    QPoint actionPosition();
    void waitUntilOver(harness::WindowId editor);

    Stage &stage_;
    test::LoopbackServer provider_;
    std::atomic<TimePoint> answeredAt_;
    std::optional<harness::ProductProcess> program_;
    std::optional<QPoint> actionPosition_;
};

} // namespace quillmender::bench
