#pragma once

#include "desktop/harness/Desktop.h"

#include <chrono>
#include <mutex>
#include <thread>

namespace quillmender {

/// Asks the main thread of the program on the bus one question after another, and beside it a
/// program that has nothing else to do. What the second one takes, the machine is to blame for.
class Responsiveness {
  public:
    explicit Responsiveness(harness::Desktop &desktop);
    Responsiveness(const Responsiveness &) = delete;
    Responsiveness &operator=(const Responsiveness &) = delete;
    ~Responsiveness();

    /// The longest that an answer took so far, a question under way included.
    std::chrono::milliseconds longestWait() const { return program_.longest(); }
    std::chrono::milliseconds longestWaitOfBystander() const { return bystander_.longest(); }

  private:
    class Questioner {
      public:
        Questioner(QString address, QString service, QString path);

        std::chrono::milliseconds longest() const;

      private:
        using Clock = std::chrono::steady_clock;

        void run(const std::stop_token &stop);

        QString address_;
        QString service_;
        QString path_;
        mutable std::mutex mutex_;
        Clock::duration longest_{};
        Clock::time_point askedAt_{};
        std::jthread thread_;
    };

    harness::ChildProcess bystanderProcess_;
    Questioner program_;
    Questioner bystander_;
};

} // namespace quillmender
