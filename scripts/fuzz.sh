#!/usr/bin/env bash
# Builds the fuzz target of the RTF reader with clang (libFuzzer, ASan and
# UBSan) in build-fuzz and runs it for SECONDS (default 300) on a copy of
# the seed corpus, so that the repository is not written. Further arguments
# go to libFuzzer (-jobs=1 -workers=1, say). It runs inside build-fuzz/,
# where libFuzzer leaves its job logs (fuzz-N.log) and the input of a crash
# (crash-*; replay it with build-fuzz/rtf_fuzz build-fuzz/crash-...). A
# crash, a sanitizer report or a broken property fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
secondes=${1:-300}
if [ $# -gt 0 ]; then shift; fi
bash scripts/setup-deps.sh

CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVDX_FUZZ=ON -DVDX_BENCH=OFF >/dev/null
cmake --build build-fuzz --target rtf_fuzz

corpus=$(mktemp -d)
trap 'rm -rf "$corpus"' EXIT
cp fuzz/corpus/rtf/* "$corpus"/
dictionnaire=$PWD/fuzz/rtf.dict
cd build-fuzz
UBSAN_OPTIONS=print_stacktrace=1 ./rtf_fuzz -max_total_time="$secondes" -dict="$dictionnaire" "$@" "$corpus"
