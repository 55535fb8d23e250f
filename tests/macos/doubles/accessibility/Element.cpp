#include "doubles/accessibility/Element.h"

#include "doubles/CallLog.h"
#include "doubles/accessibility/AccessibilityServer.h"
#include "doubles/cf/TypeIds.h"

namespace quillmender::doubles {

namespace {

class SystemWideElement : public Element {
  public:
    SystemWideElement() : Element("system-wide") {}

    AXError copy(const std::string &attribute, CFTypeRef *value) const override {
        const AccessibilityServer &server = AccessibilityServer::current();
        if (attribute != "AXFocusedUIElement")
            return kAXErrorAttributeUnsupported;
        const bool isGiven = server.focusedError == kAXErrorSuccess || server.focusedBesideError;
        if (isGiven && server.focused)
            *value = CFRetain(server.focused);
        return server.focusedError;
    }
};

} // namespace

Element::Element(std::string name) : Object("AXUIElement", elementTypeId), name_(std::move(name)) {}

Element::~Element() {
    for (const auto &[attribute, value] : attributes_)
        CFRelease(value);
}

void Element::give(const std::string &attribute, CFTypeRef value) {
    CFTypeRef &slot = attributes_[attribute];
    if (slot)
        CFRelease(slot);
    slot = value;
}

CFTypeRef Element::value(const std::string &attribute) const {
    const auto found = attributes_.find(attribute);
    return found == attributes_.end() ? nullptr : found->second;
}

AXError Element::copy(const std::string &attribute, CFTypeRef *copied) const {
    const auto error = readErrors_.find(attribute);
    if (error != readErrors_.end())
        return error->second;
    if (!value(attribute))
        return kAXErrorNoValue;
    *copied = CFRetain(value(attribute));
    const auto late = errorsWithValue_.find(attribute);
    return late == errorsWithValue_.end() ? kAXErrorSuccess : late->second;
}

AXError Element::set(const std::string &attribute, CFTypeRef value) {
    if (onSet)
        onSet(attribute);
    const auto error = writeErrors_.find(attribute);
    if (error != writeErrors_.end())
        return error->second;
    give(attribute, CFRetain(value));
    return kAXErrorSuccess;
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

CFTypeID AXUIElementGetTypeID() {
    return elementTypeId;
}

AXUIElementRef AXUIElementCreateSystemWide() {
    CallLog::shared().add("AXUIElementCreateSystemWide");
    return refOf<AXUIElementRef>(new SystemWideElement);
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef *value) {
    CallLog::shared().add("AXUIElementCopyAttributeValue " + describe(element) + " " +
                          describe(attribute));
    const auto *object = checked<Element>(element, "AXUIElementCopyAttributeValue");
    return object ? object->copy(describe(attribute), value) : kAXErrorIllegalArgument;
}

AXError AXUIElementGetPid(AXUIElementRef element, pid_t *pid) {
    CallLog::shared().add("AXUIElementGetPid " + describe(element));
    const auto *object = checked<Element>(element, "AXUIElementGetPid");
    if (!object || !object->tellsItsProcess)
        return kAXErrorIllegalArgument;
    *pid = object->process;
    return kAXErrorSuccess;
}

AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds) {
    CallLog::shared().add("AXUIElementSetMessagingTimeout " + describe(element) + " " +
                          std::to_string(timeoutInSeconds));
    return checked<Element>(element, "AXUIElementSetMessagingTimeout") ? kAXErrorSuccess
                                                                       : kAXErrorIllegalArgument;
}

AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                     CFTypeRef value) {
    CallLog::shared().add("AXUIElementSetAttributeValue " + describe(element) + " " +
                          describe(attribute) + " " + describe(value));
    const auto *object = checked<Element>(element, "AXUIElementSetAttributeValue");
    return object ? const_cast<Element *>(object)->set(describe(attribute), value)
                  : kAXErrorIllegalArgument;
}
