#!/usr/bin/env bash
# Builds the library and runs the whole test suite twice: a normal build,
# then one with AddressSanitizer and UndefinedBehaviorSanitizer; then runs
# the fuzz targets (RTF, base sources, import) for 20 seconds each (clang,
# libFuzzer).
# --quick runs the normal build only.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-deps.sh

run_suite() {
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  cmake --build "$dir"
  ctest --test-dir "$dir" --output-on-failure -j2
}

run_suite build -DCMAKE_BUILD_TYPE=RelWithDebInfo
if [ "${1:-}" != "--quick" ]; then
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    run_suite build-sanitize -DCMAKE_BUILD_TYPE=Debug -DVDX_SANITIZE=ON -DVDX_BENCH=OFF
  bash scripts/fuzz.sh 20
fi
