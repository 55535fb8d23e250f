#include "platform/macos/ObjcText.h"

namespace quillmender {

ObjcRef<NSString> toNSString(const QString &text) {
    const auto *units = reinterpret_cast<const unichar *>(text.utf16());
    return ObjcRef<NSString>::adopted(
        [[NSString alloc] initWithCharacters:units length:static_cast<NSUInteger>(text.size())]);
}

QString toQString(NSString *text) {
    QString result(static_cast<qsizetype>([text length]), Qt::Uninitialized);
    auto *units = reinterpret_cast<unichar *>(result.data());
    [text getCharacters:units range:NSMakeRange(0, static_cast<NSUInteger>(result.size()))];
    return result;
}

} // namespace quillmender
