#!/usr/bin/env bash
# Applies the update files of data/sample-maj to a copy of the sample base
# (built by scripts/run-sample.sh or the build), then shows what they
# changed: a new laboratory, a renamed one, the rows of a table the library
# does not know passed over (RE170301, RE170302), a row of every table
# again (RE170303, with one class of no substance under a father, which
# changes no answer), then a second update (RE170304) that renames a product
# and changes its price, its composition and its classes, a chapter text
# and an interaction couple; and the base's new date.
#   scripts/sample-maj.sh [VDX] [BASE]
set -euo pipefail
cd "$(dirname "$0")/.."
vdx=${1:-build/tools/vdx/vdx}
base=${2:-build/sample-base}
copie=$(mktemp -d)
trap 'rm -rf "$copie"' EXIT
cp -r "$base"/. "$copie"/
echo "files newer than the base: $("$vdx" call --base "$copie" IsMaj_Vdx data/sample-maj | head -1)"
"$vdx" maj "$copie" data/sample-maj
for code in NOVA SAN1 NOVB; do
  echo "$code: $("$vdx" call --base "$copie" LibelleLaboratoire_Vdx "$code" | tail -n 1)"
done
echo "2192156: $("$vdx" call --base "$copie" LibelleProduit_Vdx 2192156 | tail -n 1)"
echo "date of the base: $("$vdx" call --base "$copie" Version_Vdx | tail -n 1 | cut -f2)"
