#!/usr/bin/env bash
# Installs what is missing, builds the library, the vdx program and the
# sample base, then lists the long-term illnesses of the sample base.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build
build/tools/vdx/vdx call --base build/sample-base ListeALD_Vdx
