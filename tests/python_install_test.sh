#!/usr/bin/env bash
# The Python package as a user installs it: pip install of a copy of
# python/ (no network, no index) into a directory of its own, then the
# installed package, not the sources, checks a prescription on the sample
# base.
#   bash tests/python_install_test.sh PYTHON_DIR LIBVDX32 SAMPLE_BASE
set -euo pipefail
source "$(dirname "$0")/verifie.sh"
sources=$1
bibliotheque=$2
base=$3

cp -r "$sources" "$work/paquet"
verifie "pip installs the package" /usr/bin/python3 -m pip install --no-build-isolation --no-index --no-deps \
  --quiet --target "$work/site" "$work/paquet"
verifie "the installed package checks a prescription" env -u PYTHONPATH PYTHONDONTWRITEBYTECODE=1 \
  PYTHONPATH="$work/site" VDX32_LIBRARY="$bibliotheque" /usr/bin/python3 -c '
import sys, vdx32
assert vdx32.__file__.startswith(sys.argv[2]), vdx32.__file__
with vdx32.Base(sys.argv[1]) as base:
    r = base.check(["3026454", "3368195"])
    assert r.interactions[0].severity == "Association d\u00e9conseill\u00e9e", r.interactions[0]
' "$base" "$work/site"
[ "$echecs" -eq 0 ] && echo "vdx: all checks passed"
exit "$echecs"
