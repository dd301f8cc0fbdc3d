// What open() takes besides.
#pragma once

#include_next <fcntl.h>

#define O_CLOEXEC (_O_NOINHERIT | _O_BINARY)  // every file is opened with it, and none has two kinds of line ends
#define O_NOCTTY 0
#define O_DIRECTORY 0  // no folder can be opened here: whoever would lock or sync one goes without
