#include "doubles/cf/Preferences.h"

#include "doubles/CallLog.h"
#include "doubles/cf/String.h"

namespace quillmender::doubles {

namespace {
Preferences *currentPreferences = nullptr;
} // namespace

Preferences::Preferences() {
    currentPreferences = this;
}

Preferences::~Preferences() {
    currentPreferences = nullptr;
    for (const auto &[key, value] : values)
        CFRelease(value);
}

Preferences &Preferences::current() {
    return *currentPreferences;
}

void Preferences::give(const std::string &key, CFTypeRef value) {
    const auto found = values.find(key);
    if (found != values.end()) {
        CFRelease(found->second);
        values.erase(found);
    }
    if (value)
        values[key] = value;
}

std::string Preferences::stored(const std::string &key) const {
    const auto found = values.find(key);
    return found == values.end() ? "none" : describe(found->second);
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

const CFStringRef kCFPreferencesCurrentApplication =
    makeConstant(u"kCFPreferencesCurrentApplication");

CFPropertyListRef CFPreferencesCopyAppValue(CFStringRef key, CFStringRef applicationID) {
    CallLog::shared().add("CFPreferencesCopyAppValue " + describe(key) + " " +
                          describe(applicationID));
    const auto &values = Preferences::current().values;
    const auto found = values.find(describe(key));
    return found == values.end() ? nullptr : CFRetain(found->second);
}

void CFPreferencesSetAppValue(CFStringRef key, CFPropertyListRef value, CFStringRef applicationID) {
    CallLog::shared().add("CFPreferencesSetAppValue " + describe(key) + " " + describe(value) +
                          " " + describe(applicationID));
    Preferences &preferences = Preferences::current();
    preferences.give(describe(key), value ? CFRetain(value) : nullptr);
    preferences.isWritten = false;
}

Boolean CFPreferencesAppSynchronize(CFStringRef applicationID) {
    CallLog::shared().add("CFPreferencesAppSynchronize " + describe(applicationID));
    Preferences &preferences = Preferences::current();
    preferences.isWritten = preferences.synchronizes;
    return preferences.synchronizes;
}
