#pragma once

#include <QList>

#include <chrono>

namespace quillmender::bench {

using TimePoint = std::chrono::steady_clock::time_point;

/// Milliseconds from one moment to the other.
double milliseconds(TimePoint from, TimePoint to);

/// Repeated measurements of one thing.
class Samples {
  public:
    void add(double value) { values_.append(value); }
    qsizetype count() const { return values_.size(); }

    /// 0 when there are none.
    double median() const { return quantile(0.5); }
    /// The value that the given part of the measurements does not exceed.
    double quantile(double part) const;

  private:
    QList<double> values_;
};

} // namespace quillmender::bench
