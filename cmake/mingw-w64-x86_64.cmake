# Cross-compiles for Windows x64 with Debian's MinGW-w64 (posix threads).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# The DLLs and programs carry libgcc, libstdc++ and winpthread inside them, so
# they need nothing but system DLLs.
# Release builds keep their debug information; the SDK ships it in separate .debug files.
set(CMAKE_C_FLAGS_RELEASE_INIT "-O3 -DNDEBUG -g")
set(CMAKE_CXX_FLAGS_RELEASE_INIT "-O3 -DNDEBUG -g")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
