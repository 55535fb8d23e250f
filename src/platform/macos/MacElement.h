#pragma once

#include "platform/FocusedText.h"
#include "platform/macos/CFRef.h"

#include <ApplicationServices/ApplicationServices.h>

namespace quillmender {

/// An element of the system's accessibility interface, held as long as this lives.
class MacElement : public FocusedElement {
  public:
    explicit MacElement(CFRef<AXUIElementRef> element, bool isSecure = false)
        : element_(std::move(element)),
          isSecure_(isSecure) {}

    AXUIElementRef get() const { return element_.get(); }

    /// Whether it is a field for a password.
    bool isSecure() const { return isSecure_; }

    /// Null when the element is null or not of this platform.
    static const MacElement *of(const FocusedElementRef &element) {
        return dynamic_cast<const MacElement *>(element.get());
    }

  private:
    CFRef<AXUIElementRef> element_;
    bool isSecure_;
};

} // namespace quillmender
