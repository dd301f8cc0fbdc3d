// The conversions of POSIX, which mingw-w64 has when asked.
#pragma once

#ifndef _POSIX_THREAD_SAFE_FUNCTIONS
#define _POSIX_THREAD_SAFE_FUNCTIONS
#endif
#include_next <time.h>
