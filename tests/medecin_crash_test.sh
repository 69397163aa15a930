#!/usr/bin/env bash
# The doctor's private base killed while it is edited: vdx medecin stopped
# at each step of the switch of its files (VDX_ESSAI_ARRET_MAJ) and with
# SIGKILL at random moments. After each, the next connection finds the base
# as it was before the edit or after it, whole, and the edit can be made
# again.
set -u
vdx=$1
sources=$2
source "$(dirname "$0")/verifie.sh"
muet() { "$@" >/dev/null 2>&1; }
medecin() { "$vdx" medecin --base "$work/base" "$@" 2>/dev/null; }

verifie "base" muet "$vdx" build "$sources" "$work/base"
mkdir "$work/a"
verifie "a doctor's base" muet medecin create "$work/a/MED"
verifie "a first product" muet medecin add-product "$work/a/MED" 3595583 "avant"

# entier NAME: the copy connects, the first product is there, and the new
# one is absent or whole; then the edit goes through or is refused as done.
entier() {
  local vu
  vu=$(medecin comment "$work/c/MED" 3368195 | tr '\n' ' ')
  ! ls "$work/c/MED" | grep -q '\.maj$\|VDXMAJ' || { echo "FAILED: $1: copies left after the connection" >&2; return 1; }
  case "$vu" in
    "0 ") medecin add-product "$work/c/MED" 3368195 "apres" >/dev/null || { echo "FAILED: $1: the edit again" >&2; return 1; } ;;
    "1 apres ") ;;
    *) echo "FAILED: $1 left the product as '$vu'" >&2; return 1 ;;
  esac
  [ "$(medecin comment "$work/c/MED" 3595583 | tr '\n' ' ')" = "1 avant " ] || { echo "FAILED: $1 lost the first product" >&2; return 1; }
  [ "$(medecin comment "$work/c/MED" 3368195 | tr '\n' ' ')" = "1 apres " ] || { echo "FAILED: $1: no product after" >&2; return 1; }
}
copie() { rm -rf "$work/c" && cp -r "$work/a" "$work/c"; }

for etape in 1 2 3 4; do
  copie
  VDX_ESSAI_ARRET_MAJ=$etape "$vdx" medecin --base "$work/base" add-product "$work/c/MED" 3368195 apres >/dev/null 2>&1
  verifie "stopped at step $etape of the switch" entier "step $etape"
done
for essai in $(seq 1 100); do
  copie
  "$vdx" medecin --base "$work/base" add-product "$work/c/MED" 3368195 apres >/dev/null 2>&1 &
  pid=$!
  sleep "0.0$(printf '%02d' $((RANDOM % 40)))"
  kill -9 "$pid" 2>/dev/null
  wait "$pid" 2>/dev/null
  entier "kill $essai" || echecs=$((echecs + 1))
done

# Two processes adding 500 products each to one base while a third
# searches it: every product is there, each search sees whole rows. The
# sample's products widened by 800 made up for the test, each a copy of the
# sample's first product under a code and a label of its own.
mkdir "$work/large"
cp "$sources"/* "$work/large/"
sed -n 2p "$sources/VDXPRO.tsv" | awk -F'\t' -v OFS='\t' \
  '{ for (i = 1; i <= 800; i++) { $1 = 9100000 + i; $2 = sprintf("PRODUIT D ESSAI %04d CPR", i); print } }' \
  >>"$work/large/VDXPRO.tsv"
verifie "a base of the widened sources" muet "$vdx" build "$work/large" "$work/base-large"
large() { "$vdx" medecin --base "$work/base-large" "$@" 2>/dev/null; }
# Hospital products (Drapeaux 8) are not shown by the search: left out.
codes=$(awk -F'\t' 'NR == 1 { for (i = 1; i <= NF; i++) if ($i == "Drapeaux") d = i; next }
  $1 != 3595583 && int($d / 8) % 2 == 0 { print $1 }' "$work/large/VDXPRO.tsv" | head -n 1000)
copie
# Each add refused is told with its code and message.
ajoute() {
  for code in "$@"; do
    "$vdx" medecin --base "$work/base-large" add-product "$work/c/MED" "$code" "commentaire de $code" >/dev/null \
      2>>"$work/refus" || echo "add-product $code refused" >>"$work/refus"
  done
}
ajoute $(head -n 500 <<<"$codes") &
premier=$!
ajoute $(tail -n 500 <<<"$codes") &
second=$!
lectures=0
while kill -0 "$premier" 2>/dev/null || kill -0 "$second" 2>/dev/null; do
  large list "$work/c/MED" | tail -n +2 | awk -F'\t' -v c="commentaire de" \
    '$3 != "avant" && (index($3, c) != 1 || $3 != c " " $1) { print "torn row: " $0; exit 1 }' >&2 || echecs=$((echecs + 1))
  lectures=$((lectures + 1))
done
wait
verifie "searches while the base was written ($lectures)" test "$lectures" -gt 0
n=$(large list "$work/c/MED" | tail -n +2 | wc -l)
verifie "every product of both processes ($n)" test "$n" = 1001
verifie "no add refused: $(cat "$work/refus" 2>/dev/null)" test ! -s "$work/refus"

[ "$echecs" -eq 0 ] || { echo "$echecs check(s) failed" >&2; exit 1; }
echo "doctor's base crashes: all checks passed"
