#include "platform/linux/services/SerialWorker.h"

namespace quillmender {

SerialWorker::~SerialWorker() {
    {
        const std::scoped_lock lock(mutex_);
        isEnding_ = true;
        jobs_.clear();
    }
    changed_.notify_all();
    if (thread_.joinable())
        thread_.join();
}

void SerialWorker::enqueue(Job job, const std::string &subject) {
    {
        const std::scoped_lock lock(mutex_);
        jobs_.push_back({std::move(job), subject});
    }
    if (!thread_.joinable())
        thread_ = std::thread([this] { work(); });
    changed_.notify_all();
}

void SerialWorker::dropWaiting(const std::string &subject) {
    const std::scoped_lock lock(mutex_);
    std::erase_if(jobs_, [&](const Waiting &waiting) { return waiting.subject == subject; });
}

void SerialWorker::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return isEnding_ || !jobs_.empty(); });
        if (jobs_.empty())
            return;
        const Job job = std::move(jobs_.front().job);
        jobs_.pop_front();
        lock.unlock();
        job();
        lock.lock();
    }
}

} // namespace quillmender
