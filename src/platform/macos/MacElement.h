#pragma once

#include "platform/Accessibility.h"
#include "platform/macos/CFRef.h"

#include <ApplicationServices/ApplicationServices.h>

namespace quillmender {

/// An element of the system's accessibility interface, held as long as this lives.
class MacElement : public AccessibilityElement {
  public:
    /// `processId` is 0 when it is nobody's or nobody knows whose it is.
    explicit MacElement(CFRef<AXUIElementRef> element, bool isSecure = false, qint64 processId = 0)
        : element_(std::move(element)),
          isSecure_(isSecure),
          processId_(processId) {}

    bool isOf(const RunningApplicationRef &application) const override {
        const qint64 other = application ? application->processId() : 0;
        return processId_ == 0 || other == 0 || other == processId_;
    }

    AXUIElementRef get() const { return element_.get(); }

    /// Whether it is a field for a password.
    bool isSecure() const { return isSecure_; }

    /// Null when the element is null or not of this platform.
    static const MacElement *of(const AccessibilityElementRef &element) {
        return dynamic_cast<const MacElement *>(element.get());
    }

  private:
    CFRef<AXUIElementRef> element_;
    bool isSecure_;
    qint64 processId_;
};

} // namespace quillmender
