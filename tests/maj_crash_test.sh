#!/usr/bin/env bash
# The update killed while it runs: a large update file (laboratories) applied
# by vdx maj to copies of the sample base, the process killed with SIGKILL
# at random moments and at each step of the switch of its files. After each
# kill the next connection leaves the base, table by table, as it was before
# the file or as it is after it, with its date; and a run that follows gives
# the base of an uninterrupted run.
set -u
vdx=$1
sources=$2
source "$(dirname "$0")/verifie.sh"
muet() { "$@" >/dev/null; }

verifie "base" muet "$vdx" build "$sources" "$work/base" 2>/dev/null
mkdir "$work/maj"
python3 - "$work/maj/RE300101.VDX" <<'PY'
import itertools, string, sys
chiffres = string.digits + string.ascii_uppercase
lignes = ["|DEBUT|01/01/2030@RE300101@\r\n"]
for n, code in enumerate(itertools.product(chiffres, repeat=4)):
    if n == 150000:
        break
    code = ''.join(code)
    lignes.append("|LABF|%s@LABORATOIRE %s@@\r\n" % (code, code))
lignes.append("|FIN|\r\n")
open(sys.argv[1], 'w', newline='').write(''.join(lignes))
PY
etat() {  # the dump of a base, after the connection that finishes an interrupted run
  "$vdx" call --base "$1" IsMaj_Vdx "$work/maj" >/dev/null
  rm -rf "$2"
  "$vdx" dump "$1" -o "$2" >/dev/null 2>&1
}
etat "$work/base" "$work/avant"
cp -r "$work/base" "$work/complete"
verifie "an uninterrupted run" muet "$vdx" maj "$work/complete" "$work/maj" 2>/dev/null
etat "$work/complete" "$work/apres"
verifie "the run changed the base" test -n "$(diff -rq "$work/avant" "$work/apres")"

# dans_un_etat NAME: the copy reads as before or as after the file, whole.
dans_un_etat() {
  etat "$work/copie" "$work/vu"
  if diff -rq "$work/vu" "$work/avant" >/dev/null; then echo avant; return 0; fi
  if diff -rq "$work/vu" "$work/apres" >/dev/null; then echo apres; return 0; fi
  echo "FAILED: $1 left the base between two states" >&2
  diff -rq "$work/vu" "$work/avant" >&2
  return 1
}
termine() {  # a run after the kill ends as an uninterrupted one
  "$vdx" maj "$work/copie" "$work/maj" >/dev/null 2>&1
  etat "$work/copie" "$work/fin"
  diff -rq "$work/fin" "$work/apres" >/dev/null || { echo "FAILED: the run after $1 differs" >&2; return 1; }
}

vus=""
for essai in $(seq 1 50); do
  rm -rf "$work/copie"
  cp -r "$work/base" "$work/copie"
  "$vdx" maj "$work/copie" "$work/maj" >/dev/null 2>&1 &
  pid=$!
  sleep "0.$(printf '%03d' $((RANDOM % 400)))"
  kill -9 "$pid" 2>/dev/null
  wait "$pid" 2>/dev/null
  etat_vu=$(dans_un_etat "kill $essai") || { echecs=$((echecs + 1)); continue; }
  vus="$vus $etat_vu"
  termine "kill $essai" || echecs=$((echecs + 1))
done
verifie "kills before and after the switch both met" test -n "$(grep -o avant <<<"$vus" | head -1)"
for etape in 1 2 3 4 5 6; do
  rm -rf "$work/copie"
  cp -r "$work/base" "$work/copie"
  VDX_ESSAI_ARRET_MAJ=$etape "$vdx" maj "$work/copie" "$work/maj" >/dev/null 2>&1
  verifie "stopped at step $etape of the switch" muet dans_un_etat "step $etape"
  verifie "the run after step $etape" termine "step $etape"
done

[ "$echecs" -eq 0 ] || { echo "$echecs check(s) failed" >&2; exit 1; }
echo "update crashes: all checks passed ($(grep -o avant <<<"$vus" | wc -l) before, $(grep -o apres <<<"$vus" | wc -l) after)"
