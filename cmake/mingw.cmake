# Cross-build for Windows hosts with Debian's mingw-w64 (POSIX threads):
# VDX_ARCH is i686 (32-bit hosts) or x86_64 (64-bit hosts).
#   cmake -DCMAKE_TOOLCHAIN_FILE=cmake/mingw.cmake -DVDX_ARCH=i686 ...
if(NOT VDX_ARCH MATCHES "^(i686|x86_64)$")
  message(FATAL_ERROR "VDX_ARCH must be i686 or x86_64")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VDX_ARCH)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${VDX_ARCH})
set(CMAKE_C_COMPILER ${VDX_ARCH}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${VDX_ARCH}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${VDX_ARCH}-w64-mingw32-windres)
set(CMAKE_DLLTOOL ${VDX_ARCH}-w64-mingw32-dlltool)
set(CMAKE_FIND_ROOT_PATH /usr/${VDX_ARCH}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
