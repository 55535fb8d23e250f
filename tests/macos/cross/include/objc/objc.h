#pragma once

// Stands in for the runtime's header, with the types of its ABI.

#include <stdbool.h>

typedef struct objc_class *Class;
typedef struct objc_object {
    Class isa;
} *id;
typedef struct objc_selector *SEL;

#if __OBJC_BOOL_IS_BOOL
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif

#define YES __objc_yes
#define NO __objc_no
#define nil __null
#define Nil __null
