#pragma once

#include <Foundation/NSObject.h>
#include <Foundation/NSRange.h>

using unichar = unsigned short;

@interface NSString : NSObject <NSCopying>
+ (instancetype)string;
+ (instancetype)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length;
- (instancetype)initWithCharacters:(const unichar *)characters length:(NSUInteger)length;
- (NSUInteger)length;
- (unichar)characterAtIndex:(NSUInteger)index;
- (void)getCharacters:(unichar *)buffer range:(NSRange)range;
- (BOOL)isEqualToString:(NSString *)aString;
@end

#ifdef __GNU_LIBOBJC__
// The layout that the compiler gives to literals for this runtime.
@interface NSConstantString : NSString {
    const char *bytes_;
    unsigned int length_;
}
@end
#endif
