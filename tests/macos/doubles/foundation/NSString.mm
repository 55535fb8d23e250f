#include "doubles/foundation/Objects.h"
#include "doubles/foundation/Text.h"

#include <QString>

namespace quillmender::doubles {

std::string utf8(NSString *text) {
    if (text == nil)
        return "(nil)";
    QString copy;
    for (NSUInteger index = 0; index < [text length]; ++index)
        copy.append(QChar([text characterAtIndex:index]));
    return copy.toStdString();
}

NSString *nsString(const std::string &utf8Text) {
    const QString copy = QString::fromStdString(utf8Text);
    return [NSString stringWithCharacters:copy.utf16() length:NSUInteger(copy.size())];
}

} // namespace quillmender::doubles

using namespace quillmender::doubles;

@implementation NSString

+ (instancetype)string {
    return [[[self alloc] init] autorelease];
}

+ (instancetype)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length {
    return [[[self alloc] initWithCharacters:characters length:length] autorelease];
}

- (instancetype)initWithCharacters:(const unichar *)characters length:(NSUInteger)length {
    self = [super init];
    stateOf<std::u16string>(self).assign(characters, characters + length);
    return self;
}

- (NSUInteger)length {
    return stateOf<std::u16string>(self).size();
}

- (unichar)characterAtIndex:(NSUInteger)index {
    return stateOf<std::u16string>(self).at(index);
}

- (void)getCharacters:(unichar *)buffer range:(NSRange)range {
    for (NSUInteger offset = 0; offset < range.length; ++offset)
        buffer[offset] = [self characterAtIndex:range.location + offset];
}

- (BOOL)isEqualToString:(NSString *)aString {
    return aString != nil && utf8(self) == utf8(aString);
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSString class]] && [self isEqualToString:object];
}

- (NSUInteger)hash {
    return std::hash<std::string>()(utf8(self));
}

- (id)copyWithZone:(void *)zone {
    return [self retain];
}

@end

// A literal is never deallocated.
@implementation NSConstantString

- (NSUInteger)length {
    return length_;
}

- (unichar)characterAtIndex:(NSUInteger)index {
    return static_cast<unsigned char>(bytes_[index]);
}

- (instancetype)retain {
    return self;
}

- (oneway void)release {
}

- (instancetype)autorelease {
    return self;
}

@end
