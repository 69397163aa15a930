#!/usr/bin/env bash
# The header declares every export the system names (the list kept in
# tests/donnees/exports-nommes.txt), so that a host written against the
# whole list finds each entry point.
#   exports_nommes_test.sh HEADER LIST
set -u
header=$1
liste=$2
declares=$(grep -oE 'VDX_CALL [A-Za-z0-9_]+\(' "$header" | sed -E 's/VDX_CALL ([A-Za-z0-9_]+)\(/\1/' | sort -u)
nommes=$(grep -v '^#' "$liste" | sed '/^$/d' | sort -u)
[ "$(echo "$nommes" | wc -l)" -gt 200 ] || { echo "FAILED: the list $liste reads short" >&2; exit 1; }
manquants=$(comm -23 <(echo "$nommes") <(echo "$declares"))
if [ -n "$manquants" ]; then
  echo "FAILED: named but not declared: $manquants" >&2
  exit 1
fi
echo "exports: the $(echo "$nommes" | wc -l) names of the system are all declared"
