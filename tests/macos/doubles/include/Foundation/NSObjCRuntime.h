#pragma once

#include <objc/objc.h>

#ifdef __cplusplus
#define FOUNDATION_EXPORT extern "C"
#else
#define FOUNDATION_EXPORT extern
#endif

#define NS_ENUM(type, name)                                                                        \
    enum name : type name;                                                                         \
    enum name : type
#define NS_OPTIONS(type, name)                                                                     \
    type name;                                                                                     \
    enum : type

using NSInteger = long;
using NSUInteger = unsigned long;
