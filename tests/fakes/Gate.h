#pragma once

#include <coroutine>
#include <memory>
#include <utility>
#include <vector>

namespace quillmender::fakes {

/// Holds up every coroutine that awaits it until it is opened. Copies, which compilers make, are
/// the same gate.
class Gate {
  public:
    void open() {
        state_->isOpen = true;
        for (const auto &waiting : std::exchange(state_->waiting, {}))
            waiting.resume();
    }

    bool await_ready() const { return state_->isOpen; }
    void await_suspend(std::coroutine_handle<> waiting) { state_->waiting.push_back(waiting); }
    void await_resume() const {}

  private:
    struct State {
        bool isOpen = false;
        std::vector<std::coroutine_handle<>> waiting;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace quillmender::fakes
