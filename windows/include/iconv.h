// Conversions between UTF-8 and CP932, by what Windows knows of code pages; as in POSIX.
#pragma once

#include <stddef.h>

typedef struct wirelines_iconv* iconv_t;

iconv_t iconv_open(const char* to, const char* from);
size_t iconv(iconv_t converter, char** in, size_t* in_left, char** out, size_t* out_left);
int iconv_close(iconv_t converter);
