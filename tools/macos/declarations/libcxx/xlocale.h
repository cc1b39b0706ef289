// SPDX-License-Identifier: MIT
// The functions with a locale argument that libc++ expects of a BSD C library; names and types as in xlocale(3).
#pragma once

#include <ctype.h>
#include <locale.h>
#include <stdio.h>
#include <wchar.h>

// glibc has these as macros.
#undef isdigit_l
#undef isxdigit_l

extern "C" {
int sscanf_l(const char*, locale_t, const char*, ...);
int snprintf_l(char*, size_t, locale_t, const char*, ...);
int asprintf_l(char**, locale_t, const char*, ...);
struct lconv* localeconv_l(locale_t);
size_t mbrtowc_l(wchar_t*, const char*, size_t, mbstate_t*, locale_t);
}
