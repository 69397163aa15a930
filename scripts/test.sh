#!/usr/bin/env bash
# Builds the library and runs the whole test suite in a normal build, then
# again (all but the import of the whole public extract) in a build with
# AddressSanitizer and UndefinedBehaviorSanitizer; then runs
# the fuzz targets (RTF, base sources, import, update, the service's
# requests) for 10 seconds each (clang, libFuzzer).
# --quick runs the normal build only.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-deps.sh

# run_suite DIR "CTEST ARGS" CMAKE ARGS...
run_suite() {
  local dir=$1 choix=$2; shift 2
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  cmake --build "$dir"
  # shellcheck disable=SC2086
  ctest --test-dir "$dir" --output-on-failure -j2 $choix
}

run_suite build "" -DCMAKE_BUILD_TYPE=RelWithDebInfo
if [ "${1:-}" != "--quick" ]; then
  # The import of the whole public extract runs in the normal suite; under
  # the sanitizers the import is fuzzed instead, which keeps CI short.
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    run_suite build-sanitize "-E ^open_base$" -DCMAKE_BUILD_TYPE=Debug -DVDX_SANITIZE=ON -DVDX_BENCH=OFF
  bash scripts/fuzz.sh 10
fi
