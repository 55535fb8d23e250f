#pragma once

#include <QCoroTask>

#include <chrono>
#include <memory>

namespace quillmender {

/// A text that is on the pasteboard for one paste, until the pasteboard is replaced. Shared by who
/// lends it and the chord that is typed for it.
class LentText {
  public:
    LentText() = default;
    LentText(const LentText &) = delete;
    LentText &operator=(const LentText &) = delete;
    virtual ~LentText() = default;

    /// Completes when the application that was pasted into has read the text, or after `limit`,
    /// whichever is first. Completes at once, with true, where the system cannot tell. False when
    /// the application has not asked for it: it has no use for a paste, as a document that is only
    /// shown; or it does not attend to its events and has not even seen the chord, in which case
    /// whatever it asks for when it does see it is refused.
    virtual QCoro::Task<bool> wasRead(std::chrono::milliseconds limit) = 0;
};

using LentTextRef = std::shared_ptr<LentText>;

} // namespace quillmender
