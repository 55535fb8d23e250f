#include "bench/Samples.h"

#include <algorithm>

namespace quillmender::bench {

double milliseconds(TimePoint from, TimePoint to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

double Samples::quantile(double part) const {
    if (values_.isEmpty())
        return 0;
    QList<double> sorted = values_;
    std::sort(sorted.begin(), sorted.end());
    const auto last = static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<qsizetype>(last * part);
    const qsizetype above = std::min(below + 1, sorted.size() - 1);
    const double rest = last * part - static_cast<double>(below);
    return sorted[below] + (sorted[above] - sorted[below]) * rest;
}

} // namespace quillmender::bench
