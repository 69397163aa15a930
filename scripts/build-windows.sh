#!/usr/bin/env bash
# Cross-builds the library for Windows hosts with Debian's mingw-w64:
# build-win/x86_64 and build-win/i686, each with VDX32.dll, its VDX32.def,
# vdx.exe and the C host test (c_host_test.exe). Installs the toolchains,
# wine64 and LMDB's sources when they are missing.
#   --tests   also builds the GoogleTest program of the 64-bit build
set -euo pipefail
cd "$(dirname "$0")/.."
lmdb=$(bash scripts/setup-windows-deps.sh build-win/lmdb)
for arch in x86_64 i686; do
  cmake -S . -B "build-win/$arch" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw.cmake" -DVDX_ARCH="$arch" -DVDX_LMDB_SOURCES="$PWD/$lmdb" \
    -DCMAKE_CROSSCOMPILING_EMULATOR="$PWD/scripts/wine.sh" >/dev/null
  cibles=(vdx32 vdx c_host_test)
  [ "$arch" = x86_64 ] && [ "${1:-}" = --tests ] && cibles+=(vdx32_tests)
  cmake --build "build-win/$arch" --target "${cibles[@]}"
done
