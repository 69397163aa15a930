#!/usr/bin/env bash
# Installs what is missing, builds the library, the vdx program and the
# sample base, then lists the long-term illnesses of the sample base.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build
build/tools/vdx/vdx check --base build/sample-base 3499000 2756239 --age-years 30 --sex F --pregnancy 30 \
  --pathology cim10:K72
