#pragma once

#include "doubles/cf/Object.h"

#include <string>

namespace quillmender::doubles {

/// Behind CFStringRef: UTF-16 units.
class String : public Object {
  public:
    explicit String(std::u16string text, Lifetime lifetime = Lifetime::counted);

    const std::u16string &text() const { return text_; }
    std::string utf8() const;

    bool equals(const Object &other) const override;
    CFHashCode hash() const override;
    std::string description() const override { return utf8(); }

  private:
    std::u16string text_;
};

/// While it lives, so many strings can be created; each further one is null.
class ScarceStrings {
  public:
    explicit ScarceStrings(int count);
    ScarceStrings(const ScarceStrings &) = delete;
    ScarceStrings &operator=(const ScarceStrings &) = delete;
    ~ScarceStrings();
};

/// While it lives, the string after so many cannot be created; those before and behind it can.
class MissingString {
  public:
    explicit MissingString(int after);
    MissingString(const MissingString &) = delete;
    MissingString &operator=(const MissingString &) = delete;
    ~MissingString();
};

/// A text of a test, as the system would hand it out; the caller owns the reference.
CFStringRef makeString(const std::u16string &text);

/// One of the system's own constants.
CFStringRef makeConstant(const std::u16string &text);

} // namespace quillmender::doubles
