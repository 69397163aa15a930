#!/usr/bin/env bash
# The committed sample is what scripts/make-sample.sh makes from the public
# data: nobody edited data/sample by hand, and the import is deterministic.
set -u
vdx=$1
donnees=$2
source "$(dirname "$0")/verifie.sh"
projet=$(cd "$(dirname "$0")/.." && pwd)

verifie "sample made" bash "$projet/scripts/make-sample.sh" "$vdx" "$donnees" "$work/sample"
verifie "sample as committed" diff -r "$projet/data/sample" "$work/sample"

[ "$echecs" -eq 0 ] && echo "sample: all checks passed"
exit "$echecs"
