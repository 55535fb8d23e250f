#pragma once

#include "desktop/harness/TestApplication.h"

#include <QString>

namespace quillmender {

class SessionSteps;

/// An application that takes part in session after session.
class SoakPartner {
  public:
    SoakPartner() = default;
    SoakPartner(const SoakPartner &) = delete;
    SoakPartner &operator=(const SoakPartner &) = delete;
    virtual ~SoakPartner() = default;

    /// Its text is as at the start, and a word of it selected, or else the caret at its beginning
    /// where it can be captured whole.
    virtual void prepare(bool isWordOnly) = 0;

    /// What the program captures now.
    virtual QString captured() const = 0;

    /// Waits until the answer is in the place of what was captured.
    virtual void expectAnswer(const QString &answer) = 0;
    /// The text is as it was prepared.
    virtual void expectNothing() = 0;
};

/// A field on the accessibility bus. Whether it is selected in by the keyboard: some fields let
/// nobody else do that.
std::unique_ptr<SoakPartner> makeField(SessionSteps &session, harness::TestApplication application,
                                       bool isByKeyboard = false);
/// The text that fields have.
QString soakLetter();

/// A terminal, in which a program reads lines.
std::unique_ptr<SoakPartner> makeTerminal(SessionSteps &session);

} // namespace quillmender
