#include "doubles/cf/Dictionary.h"

#include "doubles/cf/TypeIds.h"

#include <algorithm>

namespace quillmender::doubles {

Dictionary::Dictionary(std::vector<Entry> entries)
    : Object("CFDictionary", dictionaryTypeId),
      entries_(std::move(entries)) {
    for (const auto &[key, value] : entries_) {
        CFRetain(key);
        CFRetain(value);
    }
}

Dictionary::~Dictionary() {
    for (const auto &[key, value] : entries_) {
        CFRelease(key);
        CFRelease(value);
    }
}

CFTypeRef Dictionary::find(CFTypeRef key) const {
    const auto found = std::ranges::find_if(
        entries_, [key](const Entry &entry) { return CFEqual(entry.first, key) != 0; });
    return found == entries_.end() ? nullptr : found->second;
}

std::string Dictionary::description() const {
    std::vector<std::string> lines;
    for (const auto &[key, value] : entries_)
        lines.push_back(describe(key) + "=" + describe(value));
    std::ranges::sort(lines);
    std::string text;
    for (const std::string &line : lines)
        text += (text.empty() ? "" : ", ") + line;
    return "{" + text + "}";
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

namespace {

const void *retained(CFAllocatorRef, const void *value) {
    return CFRetain(value);
}
void released(CFAllocatorRef, const void *value) {
    CFRelease(value);
}

} // namespace

const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {0,       retained, released,
                                                                nullptr, CFEqual,  CFHash};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {0, retained, released, nullptr,
                                                                    CFEqual};

CFTypeID CFDictionaryGetTypeID() {
    return dictionaryTypeId;
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void **keys, const void **values,
                                   CFIndex numValues, const CFDictionaryKeyCallBacks *keyCallBacks,
                                   const CFDictionaryValueCallBacks *valueCallBacks) {
    if (std::exchange(nextDictionaryIsNull, false))
        return nullptr;
    EXPECT_EQ(keyCallBacks, &kCFTypeDictionaryKeyCallBacks) << "keys are not retained or compared";
    EXPECT_EQ(valueCallBacks, &kCFTypeDictionaryValueCallBacks) << "values are not retained";
    std::vector<Dictionary::Entry> entries;
    for (CFIndex index = 0; index < numValues; ++index)
        entries.emplace_back(keys[index], values[index]);
    return refOf<CFDictionaryRef>(new Dictionary(std::move(entries)));
}

CFIndex CFDictionaryGetCount(CFDictionaryRef theDict) {
    const auto *dictionary = checked<Dictionary>(theDict, "CFDictionaryGetCount");
    return dictionary ? static_cast<CFIndex>(dictionary->entries().size()) : 0;
}

const void *CFDictionaryGetValue(CFDictionaryRef theDict, const void *key) {
    const auto *dictionary = checked<Dictionary>(theDict, "CFDictionaryGetValue");
    return dictionary ? dictionary->find(key) : nullptr;
}
