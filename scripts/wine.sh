#!/usr/bin/env bash
# Runs a Windows program under Debian's wine64 in the project's own prefix
# (build-win/wine, made at the first start), without wine's debug output.
set -euo pipefail
racine=$(cd "$(dirname "$0")/.." && pwd)
wine64=$(command -v wine64 || dpkg -L wine64 2>/dev/null | grep -m1 '/wine64$' || true)
[ -x "$wine64" ] || { echo "wine64 is not installed: run scripts/setup-windows-deps.sh" >&2; exit 127; }
export WINEPREFIX=${WINEPREFIX:-$racine/build-win/wine}
export WINEDEBUG=${WINEDEBUG:--all}
mkdir -p "$WINEPREFIX"
exec "$wine64" "$@"
