#pragma once

// Stands in for the SDK's header: the C library here already declares the locale functions.

#include <locale.h>
#include <stdlib.h>
#include <time.h>
#include <wchar.h>

#ifdef __cplusplus
extern "C" {
#endif

int asprintf_l(char **result, locale_t locale, const char *format, ...);
int snprintf_l(char *result, size_t size, locale_t locale, const char *format, ...);
int sscanf_l(const char *text, locale_t locale, const char *format, ...);

#ifdef __cplusplus
}
#endif
