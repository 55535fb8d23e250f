#include "platform/linux/wayland/keys/CopyWatch.h"

#include <utility>

namespace quillmender::wayland {

using namespace std::chrono_literals;

CopyWatch::CopyWatch() {
    end_.setSingleShot(true);
    connect(&end_, &QTimer::timeout, this, &CopyWatch::settle);
}

void CopyWatch::start(qint64 processId) {
    settle();
    if (processId == 0)
        return;
    processId_ = processId;
    ++turn_;
    end_.start(3s);
    Q_EMIT started();
}

void CopyWatch::follow(std::shared_ptr<ApplicationPulse> pulse) {
    if (!pulse || processId_ == 0)
        return;
    end_.start(60s);
    ask(this, std::move(pulse));
}

QCoro::Task<> CopyWatch::ask(QPointer<CopyWatch> self, std::shared_ptr<ApplicationPulse> pulse) {
    constexpr int wanted = 2;
    const quint64 turn = self->turn_;
    for (int answers = 0; answers < wanted;) {
        const bool hasAnswered = co_await pulse->beats(5s);
        if (!self || self->turn_ != turn || self->processId_ == 0)
            co_return;
        answers += hasAnswered ? 1 : 0;
    }
    // A busy one may have answered both before it came to the keys.
    self->end_.start(3s);
}

void CopyWatch::settle() {
    end_.stop();
    if (std::exchange(processId_, 0) != 0)
        Q_EMIT settled();
}

} // namespace quillmender::wayland
