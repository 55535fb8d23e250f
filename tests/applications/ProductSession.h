#pragma once

#include "desktop/harness/ProductPanel.h"
#include "desktop/harness/ProductProcess.h"
#include "support/LoopbackServer.h"

#include <optional>

namespace quillmender::harness {
class AnyDesktop;
}

namespace quillmender::applications {

/// What one press of the hot key came to.
struct Outcome {
    /// "selection" or "whole field"; empty when nothing was captured.
    QString scope;
    /// "accessibility" or "copying"; empty when nothing was captured.
    QString capturedBy;
    /// The request to the provider as it arrived; empty when there was none.
    QString prompt;
    /// "accessibility" or "pasting"; empty when the text was not replaced.
    QString writtenBy;
    /// What the panel says about a failure.
    QString message;
    std::optional<int> hotKeyToPanelMs;
    std::optional<int> answerToTextMs;
};

/// The program on a desktop, and the provider that it asks.
class ProductSession {
  public:
    explicit ProductSession(harness::AnyDesktop &desktop);

    /// Hot key, panel, first action, answer. Ends with the panel gone.
    Outcome run(const QString &answer);

    QByteArray log() const { return program_.log(); }

  private:
    void press(const QString &button);
    QString failureShown() const;
    void dismiss();

    harness::AnyDesktop &desktop_;
    test::LoopbackServer provider_;
    harness::ProductProcess program_;
    harness::ProductPanel panel_;
};

} // namespace quillmender::applications
