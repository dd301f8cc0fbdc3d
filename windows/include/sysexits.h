// The exit codes, the same on every system.
#pragma once

#define EX_USAGE 64
#define EX_DATAERR 65
#define EX_NOINPUT 66
#define EX_OSERR 71
#define EX_IOERR 74
#define EX_NOPERM 77
