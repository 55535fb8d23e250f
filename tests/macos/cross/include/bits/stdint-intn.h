#pragma once

// The 64-bit types of this target are `long long`; the C library here has `long`.

typedef signed char int8_t;
typedef short int16_t;
typedef int int32_t;
typedef long long int64_t;
