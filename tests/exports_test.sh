#!/usr/bin/env bash
# The shared library exports every function its header declares, the
# host-type functions, and nothing else.
set -u
lib=$1
header=$2
exportes=$(nm -D --defined-only "$lib" | awk '$2 == "T" || $2 == "W" || $2 == "D" || $2 == "B" {print $3}' | sort -u)
declares=$(grep -oE 'VDX_CALL [A-Za-z0-9_]+\(' "$header" | sed -E 's/VDX_CALL ([A-Za-z0-9_]+)\(/\1/' | sort -u)
echecs=0
intrus=$(echo "$exportes" | grep -vE '(_Vdx|^Rtf_To_Texte|^Sys[A-Za-z]+|^SafeArray[A-Za-z]+)$')
if [ -n "$intrus" ]; then echo "FAILED: exported but not ours: $intrus" >&2; echecs=1; fi
manquants=$(comm -23 <(echo "$declares") <(echo "$exportes"))
if [ -n "$manquants" ]; then echo "FAILED: declared but not exported: $manquants" >&2; echecs=1; fi
[ "$(echo "$declares" | wc -l)" -gt 10 ] || { echo "FAILED: no declaration read from $header" >&2; echecs=1; }
[ "$echecs" -eq 0 ] && echo "exports: $(echo "$declares" | wc -l) declared, all exported, nothing else"
exit "$echecs"
