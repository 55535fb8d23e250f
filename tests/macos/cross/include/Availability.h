#pragma once

// Stands in for the SDK's header: only the numbers that Qt asks for.

#define __MAC_10_14 101400
#define __MAC_10_15 101500
#define __MAC_11_0 110000
#define __MAC_12_0 120000
#define __MAC_13_0 130000

#define __MAC_OS_X_VERSION_MAX_ALLOWED __MAC_13_0
#define __MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
