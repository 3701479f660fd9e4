# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 (the posix-threads flavour, which std::thread
# needs). Libraries built for Windows by scripts/test-windows are found below CMAKE_FIND_ROOT_PATH, which the
# windows preset points at; nothing from the build machine's own /usr is ever picked up.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

list(APPEND CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The programs carry their runtime (libstdc++, libgcc, winpthread) so that they run without MinGW's DLLs.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
