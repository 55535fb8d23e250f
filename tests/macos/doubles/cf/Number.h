#pragma once

#include "doubles/cf/Object.h"

namespace quillmender::doubles {

/// Behind CFNumberRef; only whole numbers.
class Number : public Object {
  public:
    explicit Number(long long value);

    long long value() const { return value_; }
    std::string description() const override { return std::to_string(value_); }

  private:
    long long value_;
};

/// Behind the two constants of CFBooleanRef.
class BooleanConstant : public Object {
  public:
    explicit BooleanConstant(bool value);

    bool value() const { return value_; }
    std::string description() const override { return value_ ? "true" : "false"; }

  private:
    bool value_;
};

} // namespace quillmender::doubles
