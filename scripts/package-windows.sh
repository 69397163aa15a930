#!/usr/bin/env bash
# The package for Windows hosts, build-win/VDX32-VERSION.zip: both DLLs with
# their .def and vdx.exe (x86_64/ and i686/), the headers, the host guide and
# the sample base. The base is built by the Linux vdx: LMDB on Windows sizes
# a file it writes to its whole map (4 GB here) until the store grows its
# maps by steps there.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build-windows.sh
version=$(sed -nE 's/^project\(vdx32 VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
paquet=build-win/paquet/VDX32-$version
rm -rf build-win/paquet
mkdir -p "$paquet/include/vdx32" "$paquet/docs"
for arch in x86_64 i686; do
  mkdir -p "$paquet/$arch"
  cp "build-win/$arch/VDX32.dll" "build-win/$arch/VDX32.def" "build-win/$arch/tools/vdx/vdx.exe" "$paquet/$arch/"
done
cp include/vdx32/vdx32.h include/vdx32/oleauto.h "$paquet/include/vdx32/"
cp docs/hosts.md "$paquet/docs/"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target vdx >/dev/null
build/tools/vdx/vdx build data/sample "$paquet/sample-base" 2>/dev/null
(cd build-win/paquet && cmake -E tar cf "../VDX32-$version.zip" --format=zip "VDX32-$version")
echo "build-win/VDX32-$version.zip"
