// Variables of the environment; one that is set to nothing is not set.
#pragma once

#include_next <stdlib.h>

#ifdef __cplusplus
extern "C" __declspec(dllimport) int __cdecl _putenv_s(const char* name, const char* value);

inline int setenv(const char* name, const char* value, int) {
  return _putenv_s(name, value);
}
#endif
