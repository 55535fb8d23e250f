#pragma once

#include <ApplicationServices/ApplicationServices.h>

namespace quillmender::doubles {

/// The system's accessibility service while an instance lives.
class AccessibilityServer {
  public:
    AccessibilityServer();
    AccessibilityServer(const AccessibilityServer &) = delete;
    AccessibilityServer &operator=(const AccessibilityServer &) = delete;
    ~AccessibilityServer();

    static AccessibilityServer &current();

    bool trusted = true;
    bool grantsOnPrompt = false;
    /// What AXFocusedUIElement of the system-wide element is; not owned. Null answers no value.
    CFTypeRef focused = nullptr;
    AXError focusedError = kAXErrorSuccess;
    bool focusedBesideError = false; ///< an error, and `focused` all the same
    bool createsValues = true;       ///< whether AXValueCreate succeeds
    bool unpacksValues = true;       ///< whether AXValueGetValue succeeds
};

} // namespace quillmender::doubles
