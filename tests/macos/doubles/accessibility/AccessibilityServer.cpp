#include "doubles/accessibility/AccessibilityServer.h"

#include "doubles/CallLog.h"
#include "doubles/cf/Dictionary.h"
#include "doubles/cf/String.h"

namespace quillmender::doubles {

namespace {
AccessibilityServer *currentServer = nullptr;
} // namespace

AccessibilityServer::AccessibilityServer() {
    currentServer = this;
}

AccessibilityServer::~AccessibilityServer() {
    currentServer = nullptr;
}

AccessibilityServer &AccessibilityServer::current() {
    return *currentServer;
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

CFStringRef kAXTrustedCheckOptionPrompt = makeConstant(u"AXTrustedCheckOptionPrompt");

Boolean AXIsProcessTrusted() {
    CallLog::shared().add("AXIsProcessTrusted");
    return AccessibilityServer::current().trusted;
}

Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
    CallLog::shared().add("AXIsProcessTrustedWithOptions " + describe(options));
    AccessibilityServer &server = AccessibilityServer::current();
    const bool prompts =
        options && CFDictionaryGetValue(options, kAXTrustedCheckOptionPrompt) == kCFBooleanTrue;
    server.trusted = server.trusted || (prompts && server.grantsOnPrompt);
    return server.trusted;
}
