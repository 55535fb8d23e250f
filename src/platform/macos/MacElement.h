#pragma once

#include "platform/Accessibility.h"
#include "platform/macos/CFRef.h"

#include <ApplicationServices/ApplicationServices.h>

namespace quillmender {

/// An element of the system's accessibility interface, held as long as this lives.
class MacElement : public AccessibilityElement {
  public:
    explicit MacElement(CFRef<AXUIElementRef> element) : element_(std::move(element)) {}

    AXUIElementRef get() const { return element_.get(); }

    /// Null when the element is null or not of this platform.
    static AXUIElementRef of(const AccessibilityElementRef &element) {
        const auto *own = dynamic_cast<const MacElement *>(element.get());
        return own ? own->get() : nullptr;
    }

  private:
    CFRef<AXUIElementRef> element_;
};

} // namespace quillmender
