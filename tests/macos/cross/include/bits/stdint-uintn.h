#pragma once

// The 64-bit types of this target are `long long`; the C library here has `long`.

typedef unsigned char uint8_t;
typedef unsigned short uint16_t;
typedef unsigned int uint32_t;
typedef unsigned long long uint64_t;
