#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace quillmender {

/// Runs jobs one after another, in the order in which they were given, on a thread of its own that
/// is started by the first job. Destruction waits for the job under way and drops the rest.
class SerialWorker {
  public:
    using Job = std::function<void()>;

    SerialWorker() = default;
    SerialWorker(const SerialWorker &) = delete;
    SerialWorker &operator=(const SerialWorker &) = delete;
    ~SerialWorker();

    /// `subject` is what the job changes; empty for a job that changes nothing.
    void enqueue(Job job, const std::string &subject = {});

    /// Drops the jobs that wait and would change the subject.
    void dropWaiting(const std::string &subject);

  private:
    struct Waiting {
        Job job;
        std::string subject;
    };

    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Waiting> jobs_;
    bool isEnding_ = false;
    std::thread thread_;
};

} // namespace quillmender
