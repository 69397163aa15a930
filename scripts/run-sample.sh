#!/usr/bin/env bash
# Installs what is missing, builds the library, the vdx program and the
# sample base, then checks a prescription on it: warfarin with ibuprofen for
# a woman 30 weeks pregnant with a duodenal ulcer.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build
build/tools/vdx/vdx check --base build/sample-base 3026454 3368195 --age-years 30 --sex F --pregnancy 30 \
  --pathology cim10:K26
