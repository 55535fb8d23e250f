#pragma once

#include <QList>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace quillmender {

/// Stops process groups when something happens and continues them some time later.
class Stopper {
  public:
    struct Order {
        QString moment;
        qint64 processGroup = 0;
        std::chrono::milliseconds duration{0};
    };

    Stopper();
    Stopper(const Stopper &) = delete;
    Stopper &operator=(const Stopper &) = delete;
    /// Continues what is stopped.
    ~Stopper();

    void arm(const QList<Order> &orders);

    /// Carries out the orders for it, each once. From any thread; when it returns, what was to be
    /// stopped is.
    void happened(const QString &moment);

    /// Whether nothing is stopped now.
    bool isOver() const;

    /// The orders that were not carried out are no more.
    void disarm();

    /// The moments of the orders that were carried out.
    QStringList carriedOut() const;

  private:
    using Clock = std::chrono::steady_clock;

    struct Stop {
        qint64 processGroup;
        Clock::time_point until;
    };

    void run(const std::stop_token &stop);
    void continueWhatIsDue(Clock::time_point now);

    mutable std::mutex mutex_;
    std::condition_variable_any changed_;
    QList<Order> orders_;
    QList<Stop> stops_;
    QStringList carriedOut_;
    std::jthread thread_;
};

} // namespace quillmender
