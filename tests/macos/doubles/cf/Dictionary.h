#pragma once

#include "doubles/cf/Object.h"

#include <utility>
#include <vector>

namespace quillmender::doubles {

/// Behind CFDictionaryRef; retains its keys and values.
class Dictionary : public Object {
  public:
    using Entry = std::pair<CFTypeRef, CFTypeRef>;

    explicit Dictionary(std::vector<Entry> entries);
    ~Dictionary() override;

    const std::vector<Entry> &entries() const { return entries_; }

    /// Null when there is none; the dictionary owns it.
    CFTypeRef find(CFTypeRef key) const;

    /// "{key=value, ...}" in the order of the keys' texts.
    std::string description() const override;

  private:
    std::vector<Entry> entries_;
};

/// Makes the next CFDictionaryCreate answer null.
inline bool nextDictionaryIsNull = false;

} // namespace quillmender::doubles
