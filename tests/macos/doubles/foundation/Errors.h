#pragma once

#import <Foundation/Foundation.h>
#include <string>

namespace quillmender::doubles {

/// Autoreleased.
NSError *errorDescribed(const std::string &description);

} // namespace quillmender::doubles
