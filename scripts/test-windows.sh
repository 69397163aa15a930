#!/usr/bin/env bash
# The Windows job: builds both DLLs, then checks that each exports every
# function of the header under its plain name, runs the C host against the
# 64-bit DLL under wine64, and has the 64-bit vdx.exe build and check the
# sample base. The 32-bit host runs when a 32-bit wine is installed.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build-windows.sh
for arch in x86_64 i686; do
  bash tests/exports_test.sh "build-win/$arch/VDX32.dll" include/vdx32/vdx32.h "$arch-w64-mingw32-objdump"
done
base=$(mktemp -d)
trap 'rm -rf "$base"' EXIT
scripts/wine.sh build-win/x86_64/tools/vdx/vdx.exe build data/sample "$base/sample" 2>/dev/null
scripts/wine.sh build-win/x86_64/c_host_test.exe "$base/sample"
sortie=$(scripts/wine.sh build-win/x86_64/tools/vdx/vdx.exe check --base "$base/sample" 3026454 2>&1)
grep -q "COUMADINE 2MG CPR SEC B/20" <<<"$sortie" || { echo "FAILED: vdx.exe check: $sortie" >&2; exit 1; }
echo "vdx.exe: the sample base built and checked under wine64"
if command -v wine >/dev/null && wine --version >/dev/null 2>&1 && [ -e /usr/lib/wine/wine ]; then
  WINEPREFIX=$PWD/build-win/wine32 WINEDEBUG=-all wine build-win/i686/c_host_test.exe "$base/sample"
else
  echo "32-bit wine is not installed here: the i686 host is built (stdcall, plain names checked above), not run"
fi
