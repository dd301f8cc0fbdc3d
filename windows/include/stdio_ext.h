// Files lock themselves at each call here; nobody can take that over.
#pragma once

#include <stdio.h>

#define FSETLOCKING_BYCALLER 2

inline int __fsetlocking(FILE*, int) {
  return 0;
}
