#include "desktop/stalls/Stopper.h"

#include <QStringList>

#include <algorithm>
#include <csignal>

namespace quillmender {

Stopper::Stopper() : thread_([this](const std::stop_token &stop) { run(stop); }) {}

Stopper::~Stopper() {
    thread_.request_stop();
    thread_.join();
    continueWhatIsDue(Clock::time_point::max());
}

void Stopper::arm(const QList<Order> &orders) {
    const std::scoped_lock lock(mutex_);
    orders_ = orders;
    carriedOut_.clear();
}

void Stopper::happened(const QString &moment) {
    const std::scoped_lock lock(mutex_);
    for (const Order &order : orders_) {
        if (order.moment != moment)
            continue;
        ::kill(-pid_t(order.processGroup), SIGSTOP);
        stops_.append({order.processGroup, Clock::now() + order.duration});
        carriedOut_.append(moment);
    }
    orders_.removeIf([&](const Order &order) { return order.moment == moment; });
    changed_.notify_all();
}

bool Stopper::isOver() const {
    const std::scoped_lock lock(mutex_);
    return stops_.isEmpty();
}

void Stopper::disarm() {
    const std::scoped_lock lock(mutex_);
    orders_.clear();
}

QStringList Stopper::carriedOut() const {
    const std::scoped_lock lock(mutex_);
    return carriedOut_;
}

void Stopper::run(const std::stop_token &stop) {
    std::unique_lock lock(mutex_);
    while (!stop.stop_requested()) {
        if (stops_.isEmpty()) {
            changed_.wait(lock, stop, [this] { return !stops_.isEmpty(); });
            continue;
        }
        const auto first = std::ranges::min_element(stops_, {}, &Stop::until)->until;
        changed_.wait_until(lock, stop, first, [first] { return Clock::now() >= first; });
        continueWhatIsDue(Clock::now());
    }
}

void Stopper::continueWhatIsDue(Clock::time_point now) {
    const QList<Stop> before = stops_;
    stops_.removeIf([now](const Stop &stop) { return stop.until <= now; });
    for (const Stop &stop : before) {
        // Another order may want it stopped for longer.
        const bool isStillWanted = std::ranges::any_of(
            stops_, [&stop](const Stop &other) { return other.processGroup == stop.processGroup; });
        if (!isStillWanted)
            ::kill(-pid_t(stop.processGroup), SIGCONT);
    }
}

} // namespace quillmender
