#pragma once

#include <type_traits>

/// Asserts that a system function has exactly this type, written as that of a pointer to it.
#define QUILLMENDER_CONTRACT_FUNCTION(function, ...)                                               \
    static_assert(std::is_same_v<decltype(&function), __VA_ARGS__>,                                \
                  #function " has another signature")

/// Asserts a type's size and signedness.
#define QUILLMENDER_CONTRACT_INTEGER(type, size, isSigned)                                         \
    static_assert(sizeof(type) == (size) && std::is_signed_v<type> == (isSigned),                  \
                  #type " is another integer")
