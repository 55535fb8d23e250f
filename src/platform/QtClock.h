#pragma once

#include "platform/Clock.h"

#include <QObject>

namespace quillmender {

/// Sleeps on the event loop of the thread that made it.
class QtClock : public QObject, public Clock {
    Q_OBJECT

  public:
    QCoro::Task<> sleepFor(std::chrono::milliseconds duration) override;
    void cancelAll() override;

  Q_SIGNALS:
    void cancelled();

  private:
    bool isCancelled_ = false;
};

} // namespace quillmender
