#!/usr/bin/env bash
# The package for Windows hosts, build-win/VDX32-VERSION.zip: both DLLs with
# their .def and vdx.exe (x86_64/ and i686/), the headers, the host guide,
# the sample's sources and the sample base built from them by the 64-bit
# vdx.exe under wine64. A 32-bit program's base files differ (LMDB's page
# numbers are as wide as the program): 32-bit hosts build theirs with
# i686\vdx.exe from the sources, as the package's README says.
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
cp -r data/sample "$paquet/sample-sources"
timeout 600 scripts/wine.sh build-win/x86_64/tools/vdx/vdx.exe build data/sample "$paquet/x86_64/sample-base" 2>/dev/null
cat >"$paquet/README.txt" <<'TEXTE'
VDX32 for Windows hosts

x86_64\VDX32.dll   for 64-bit hosts, with its sample base in x86_64\sample-base
i686\VDX32.dll     for 32-bit hosts (stdcall, plain export names)
include\vdx32\     the C header; docs\hosts.md declares the exports for VB, C# and Python

A base is read by programs of the width that built it. For a 32-bit host,
build the sample base with the 32-bit vdx.exe:

    i686\vdx.exe build sample-sources i686\sample-base
TEXTE
(cd build-win/paquet && cmake -E tar cf "../VDX32-$version.zip" --format=zip "VDX32-$version")
echo "build-win/VDX32-$version.zip"
