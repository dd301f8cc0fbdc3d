# Builds for 64-bit Windows with mingw-w64 (Debian: g++-mingw-w64-x86-64-posix). The programs need nothing but what
# Windows has: the compiler's own libraries are linked into them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

# What scripts/windows has put there, then the compiler's own; nothing of the machine that builds.
set(wirelines_prefix ${CMAKE_CURRENT_LIST_DIR}/../build/windows/prefix)
set(CMAKE_FIND_ROOT_PATH ${wirelines_prefix} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${wirelines_prefix}/lib/pkgconfig)

find_program(WIRELINES_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(WIRELINES_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${WIRELINES_WINE})
endif()
