// Folders, which are what we lock, cannot be opened as files here.
#pragma once

#define LOCK_EX 2

inline int flock(int, int) {
  return -1;
}
