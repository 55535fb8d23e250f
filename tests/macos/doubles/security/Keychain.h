#pragma once

#include <Security/Security.h>
#include <string>
#include <vector>

namespace quillmender::doubles {

/// The user's keychain while an instance lives.
class Keychain {
  public:
    struct Item {
        std::string itemClass;
        std::string service;
        std::string account;
        std::string data;
        std::string accessible;

        friend bool operator==(const Item &, const Item &) = default;
    };

    Keychain();
    Keychain(const Keychain &) = delete;
    Keychain &operator=(const Keychain &) = delete;
    ~Keychain();

    static Keychain &current();

    std::vector<Item> items;
    /// What each call ends with when it is not success.
    OSStatus copyStatus = errSecSuccess;
    OSStatus addStatus = errSecSuccess;
    OSStatus deleteStatus = errSecSuccess;
    /// What a successful copy answers instead of the item's bytes; not owned.
    CFTypeRef answer = nullptr;
    bool answersNull = false;
    /// Gives `answer` even with a status that is not success.
    bool answersInSpiteOfStatus = false;
};

} // namespace quillmender::doubles
