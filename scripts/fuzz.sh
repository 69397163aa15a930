#!/usr/bin/env bash
# Builds the fuzz targets with clang (libFuzzer, ASan and UBSan) in
# build-fuzz and runs each for SECONDS (default 300) on a copy of its seed
# corpus, so that the repository is not written: the RTF reader, the reader
# of base sources, the import of the public files, the update's run over
# any bytes as an update file, and the reading of the service's requests.
# Further arguments go to libFuzzer (-jobs=1 -workers=1, say). They run inside build-fuzz/, where
# libFuzzer leaves its job logs (fuzz-N.log) and the input of a crash
# (crash-*; replay it with build-fuzz/NAME_fuzz build-fuzz/crash-...). A
# crash, a sanitizer report or a broken property fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
secondes=${1:-300}
if [ $# -gt 0 ]; then shift; fi
bash scripts/setup-deps.sh

cibles=(rtf sources import maj service)
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DVDX_FUZZ=ON -DVDX_BENCH=OFF >/dev/null
cmake --build build-fuzz --target "${cibles[@]/%/_fuzz}"

projet=$PWD
corpus=$(mktemp -d)
trap 'rm -rf "$corpus"' EXIT
cd build-fuzz
for cible in "${cibles[@]}"; do
  rm -rf "${corpus:?}"/*
  cp "$projet/fuzz/corpus/$cible"/* "$corpus"/
  dictionnaire=()
  [ -f "$projet/fuzz/$cible.dict" ] && dictionnaire=(-dict="$projet/fuzz/$cible.dict")
  echo "fuzzing $cible for $secondes s"
  UBSAN_OPTIONS=print_stacktrace=1 "./${cible}_fuzz" -max_total_time="$secondes" "${dictionnaire[@]}" "$@" "$corpus"
done
