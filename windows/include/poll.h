// Whether there is something to read; for writing it never waits.
#pragma once

#define POLLIN 1
#define POLLOUT 4

struct pollfd {
  int fd;
  short events, revents;
};

int poll(pollfd* wait, unsigned count, int milliseconds);
