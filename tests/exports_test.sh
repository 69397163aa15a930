#!/usr/bin/env bash
# The library exports every function its header declares and nothing else
# of its own: on Linux beside the host-type functions (Sys*, SafeArray*),
# which Windows has in its own oleaut32; a DLL's names plain, without the
# "@n" of stdcall.
#   exports_test.sh LIBRARY HEADER [OBJDUMP]   (OBJDUMP for a DLL)
set -u
lib=$1
header=$2
objdump=${3:-}
if [ -n "$objdump" ]; then
  exportes=$("$objdump" -p "$lib" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' | sed -nE 's/^\s*\[ *[0-9]+\] (.*)$/\1/p' | sort -u)
  propres='(_Vdx|^Rtf_To_Texte)$'
else
  exportes=$(nm -D --defined-only "$lib" | awk '$2 == "T" || $2 == "W" || $2 == "D" || $2 == "B" {print $3}' | sort -u)
  propres='(_Vdx|^Rtf_To_Texte|^Sys[A-Za-z]+|^SafeArray[A-Za-z]+)$'
fi
declares=$(grep -oE 'VDX_CALL [A-Za-z0-9_]+\(' "$header" | sed -E 's/VDX_CALL ([A-Za-z0-9_]+)\(/\1/' | sort -u)
echecs=0
intrus=$(echo "$exportes" | grep -vE "$propres")
if [ -n "$intrus" ]; then echo "FAILED: exported but not ours: $intrus" >&2; echecs=1; fi
manquants=$(comm -23 <(echo "$declares") <(echo "$exportes"))
if [ -n "$manquants" ]; then echo "FAILED: declared but not exported: $manquants" >&2; echecs=1; fi
[ "$(echo "$declares" | wc -l)" -gt 10 ] || { echo "FAILED: no declaration read from $header" >&2; echecs=1; }
[ "$echecs" -eq 0 ] && echo "exports: $(echo "$declares" | wc -l) declared, all exported, nothing else"
exit "$echecs"
