// How many files the C library opens at once.
#pragma once

#include <stdio.h>

#define RLIMIT_NOFILE 7

struct rlimit {
  unsigned long long rlim_cur, rlim_max;
};

inline int getrlimit(int, rlimit* limit) {
  limit->rlim_cur = limit->rlim_max = static_cast<unsigned long long>(_getmaxstdio());
  return 0;
}
