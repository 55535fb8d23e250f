#pragma once

#import <Foundation/Foundation.h>
#include <string>

namespace quillmender::doubles {

/// Nil becomes "(nil)".
std::string utf8(NSString *text);

/// Autoreleased.
NSString *nsString(const std::string &utf8Text);

} // namespace quillmender::doubles
