#pragma once

#include "platform/Workspace.h"

#include <QCoroTask>
#include <QString>

#include <optional>

namespace quillmender {

/// What the window system tells the other services of the application in front (the last active
/// one that is not this program).
class FrontmostSource {
  public:
    FrontmostSource() = default;
    FrontmostSource(const FrontmostSource &) = delete;
    FrontmostSource &operator=(const FrontmostSource &) = delete;
    virtual ~FrontmostSource() = default;

    /// Null when there is none, or nobody can tell.
    virtual RunningApplicationRef application() const = 0;

    /// Whether it is a terminal emulator, where Control+C is an interrupt: its .desktop file has
    /// the category TerminalEmulator, or its window class is a known terminal's.
    virtual bool isTerminal() const = 0;

    /// Makes ready, some milliseconds at a time, what the first answer needs. False when nothing
    /// is left.
    virtual bool prepareMore() { return false; }

    /// The text of the PRIMARY selection when that application owns it. Not to be asked while the
    /// focus is in a password field: browsers put what is selected there on PRIMARY too.
    virtual QCoro::Task<std::optional<QString>> primarySelection() = 0;
};

} // namespace quillmender
