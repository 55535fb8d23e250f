#include "doubles/cf/String.h"

#include "doubles/cf/TypeIds.h"

#include <QString>

#include <algorithm>

namespace quillmender::doubles {

namespace {
constexpr int plenty = -1;
int stringsLeft = plenty;
int stringsUntilMissing = plenty;
} // namespace

ScarceStrings::ScarceStrings(int count) {
    stringsLeft = count;
}

ScarceStrings::~ScarceStrings() {
    stringsLeft = plenty;
}

MissingString::MissingString(int after) {
    stringsUntilMissing = after;
}

MissingString::~MissingString() {
    stringsUntilMissing = plenty;
}

String::String(std::u16string text, Lifetime lifetime)
    : Object("CFString", stringTypeId, lifetime),
      text_(std::move(text)) {}

std::string String::utf8() const {
    return QString::fromStdU16String(text_).toStdString();
}

bool String::equals(const Object &other) const {
    const auto *string = dynamic_cast<const String *>(&other);
    return string && string->text_ == text_;
}

CFHashCode String::hash() const {
    return std::hash<std::u16string>()(text_);
}

CFStringRef makeString(const std::u16string &text) {
    return refOf<CFStringRef>(new String(text));
}

CFStringRef makeConstant(const std::u16string &text) {
    return refOf<CFStringRef>(new String(text, Object::Lifetime::constant));
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

CFTypeID CFStringGetTypeID() {
    return stringTypeId;
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar *chars, CFIndex numChars) {
    const bool isMissing = stringsUntilMissing == 0;
    if (stringsUntilMissing != plenty)
        --stringsUntilMissing;
    if (stringsLeft == 0 || isMissing)
        return nullptr;
    if (stringsLeft > 0)
        --stringsLeft;
    return makeString(std::u16string(chars, chars + numChars));
}

CFIndex CFStringGetLength(CFStringRef theString) {
    const auto *string = checked<String>(theString, "CFStringGetLength");
    return string ? static_cast<CFIndex>(string->text().size()) : 0;
}

void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar *buffer) {
    const auto *string = checked<String>(theString, "CFStringGetCharacters");
    if (!string)
        return;
    const auto size = static_cast<CFIndex>(string->text().size());
    if (range.location < 0 || range.length < 0 || range.location + range.length > size) {
        ADD_FAILURE() << "CFStringGetCharacters was called with a range outside the text";
        return;
    }
    std::copy_n(string->text().begin() + range.location, range.length, buffer);
}
