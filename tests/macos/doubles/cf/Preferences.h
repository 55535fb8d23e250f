#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <map>
#include <string>

namespace quillmender::doubles {

/// The user's preferences of this application while an instance lives.
class Preferences {
  public:
    using Values = std::map<std::string, CFTypeRef>;

    Preferences();
    Preferences(const Preferences &) = delete;
    Preferences &operator=(const Preferences &) = delete;
    ~Preferences();

    static Preferences &current();

    /// Takes over the caller's reference. Null removes the key.
    void give(const std::string &key, CFTypeRef value);

    /// For a key, its value's description; "none" when there is none.
    std::string stored(const std::string &key) const;

    /// Whether everything that was set is also written.
    bool isWritten = true;
    bool synchronizes = true; ///< what CFPreferencesAppSynchronize answers
    Values values;
};

} // namespace quillmender::doubles
