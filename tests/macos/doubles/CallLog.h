#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillmender::doubles {

/// The calls of the system's services in the order in which they were made, across all frameworks.
/// One line a call: the function's name, then its arguments.
class CallLog {
  public:
    static CallLog &shared();

    void add(const std::string &call);
    void clear() { calls_.clear(); }
    const std::vector<std::string> &calls() const { return calls_; }

    /// What was recorded since the last `take` or `clear`.
    std::vector<std::string> take();

    /// Told of each call, so that it can be put among those of other fakes.
    std::function<void(const std::string &)> onCall;

  private:
    std::vector<std::string> calls_;
};

} // namespace quillmender::doubles
