#include "platform/macos/CFConversions.h"

namespace quillmender {

CFRef<CFStringRef> toCFString(const QString &text) {
    return CFRef<CFStringRef>::adopted(
        CFStringCreateWithCharacters(kCFAllocatorDefault, text.utf16(), text.size()));
}

CFRef<CFDataRef> toCFData(const QByteArray &bytes) {
    return CFRef<CFDataRef>::adopted(CFDataCreate(
        kCFAllocatorDefault, reinterpret_cast<const UInt8 *>(bytes.constData()), bytes.size()));
}

std::optional<QString> stringFrom(CFTypeRef value) {
    if (!value || CFGetTypeID(value) != CFStringGetTypeID())
        return std::nullopt;
    const auto *const string = static_cast<CFStringRef>(value);
    QString text(CFStringGetLength(string), Qt::Uninitialized);
    CFStringGetCharacters(string, CFRangeMake(0, text.size()),
                          reinterpret_cast<UniChar *>(text.data()));
    return text;
}

std::optional<QByteArray> bytesFrom(CFTypeRef value) {
    if (!value || CFGetTypeID(value) != CFDataGetTypeID())
        return std::nullopt;
    const auto *const data = static_cast<CFDataRef>(value);
    return QByteArray(reinterpret_cast<const char *>(CFDataGetBytePtr(data)),
                      CFDataGetLength(data));
}

} // namespace quillmender
