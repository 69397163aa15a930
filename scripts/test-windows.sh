#!/usr/bin/env bash
# The Windows job: builds both DLLs and the 64-bit test program, then checks
# that each DLL exports every function of the header under its plain name,
# runs the test suite, the C host and vdx.exe under wine64, and has two
# hosts read the sample base while vdx.exe rebuilds it three times. The
# 32-bit host runs when a 32-bit wine is installed.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build-windows.sh --tests
for arch in x86_64 i686; do
  bash tests/exports_test.sh "build-win/$arch/VDX32.dll" include/vdx32/vdx32.h "$arch-w64-mingw32-objdump"
done
# Every run under wine is bounded: a hung wine must not hang the job.
wine64() { timeout 900 scripts/wine.sh "$@"; }
wine64 build-win/x86_64/vdx32_tests.exe --gtest_brief=1
base=$(mktemp -d)
trap 'rm -rf "$base"' EXIT
vdx=build-win/x86_64/tools/vdx/vdx.exe
wine64 "$vdx" build data/sample "$base/sample" 2>/dev/null
wine64 build-win/x86_64/c_host_test.exe "$base/sample"
sortie=$(wine64 "$vdx" check --base "$base/sample" 3026454 2>&1)
grep -q "COUMADINE 2MG CPR SEC B/20" <<<"$sortie" || { echo "FAILED: vdx.exe check: $sortie" >&2; exit 1; }
echo "vdx.exe: the sample base built and checked under wine64"

# Two hosts read while the base is rebuilt and put in place under them.
lecteurs=()
for i in 1 2; do
  wine64 build-win/x86_64/c_host_test.exe "$base/sample" --pendant 12 >"$base/lecteur$i.log" 2>&1 &
  lecteurs+=($!)
done
sleep 2
for tour in 1 2 3; do wine64 "$vdx" build --force data/sample "$base/sample" 2>/dev/null; done
for i in 1 2; do
  wait "${lecteurs[$((i - 1))]}" || { echo "FAILED: reader $i during the rebuilds:" >&2; cat "$base/lecteur$i.log" >&2; exit 1; }
done
echo "two readers under wine64 read through three rebuilds: $(cat "$base"/lecteur*.log | tr '\n' ' ')"

# A 32-bit program's LMDB files differ from a 64-bit one's (page numbers as
# wide as the program): the 32-bit host reads a base its own vdx.exe built.
if command -v wine >/dev/null && wine --version >/dev/null 2>&1 && [ -e /usr/lib/wine/wine ]; then
  wine32() { WINEPREFIX=$PWD/build-win/wine32 WINEDEBUG=-all timeout 600 wine "$@"; }
  wine32 build-win/i686/tools/vdx/vdx.exe build data/sample "$base/sample32" 2>/dev/null
  wine32 build-win/i686/c_host_test.exe "$base/sample32"
else
  echo "32-bit wine is not installed here: the i686 host is built (stdcall, plain names checked above), not run"
fi
