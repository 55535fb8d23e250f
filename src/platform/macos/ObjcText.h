#pragma once

#include "platform/macos/ObjcRef.h"

#include <QString>

#import <Foundation/Foundation.h>

namespace quillmender {

/// Both keep every UTF-16 code unit. A null string becomes an empty one.
ObjcRef<NSString> toNSString(const QString &text);
QString toQString(NSString *text);

} // namespace quillmender
