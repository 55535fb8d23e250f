#pragma once

#include <QString>

#include <stdexcept>

namespace quillmender::harness {

/// A desktop that cannot be set up, or a condition that did not come true before its deadline.
class HarnessError : public std::runtime_error {
  public:
    explicit HarnessError(const QString &what) : std::runtime_error(what.toStdString()) {}
};

} // namespace quillmender::harness
