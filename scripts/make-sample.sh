#!/usr/bin/env bash
# Regenerates data/sample from the public data: the import of the products,
# composition, routes, groups and interactions of a few specialities of each
# substance of data/sample-filter.txt, then the hand-written tables of
# data/sample-hand (contra-indication and allergy terms, pregnancy rows,
# excipients, concepts, classes, kosher ratings, posologies and their
# terrains, the units of take of a few products, acts) added to them, and
# a few fields of imported products set (data/sample-hand/VDXPRO.champs).
# The same data give byte-identical sources.
#   scripts/make-sample.sh VDX PUBLIC_DATA [OUT]
# VDX is the vdx program, PUBLIC_DATA the directory holding bdpm-2017-03 and
# interactions-2016-08; OUT defaults to data/sample.
set -euo pipefail
if [ $# -lt 2 ] || [ $# -gt 3 ]; then
    echo "usage: $0 VDX PUBLIC_DATA [OUT]" >&2
    exit 2
fi
vdx=$1
donnees=$2
projet=$(cd "$(dirname "$0")/.." && pwd)
sortie=${3:-$projet/data/sample}
specialites_par_substance=6

travail=$(mktemp -d)
trap 'rm -rf "$travail"' EXIT
"$vdx" import --keep-going --filter "$projet/data/sample-filter.txt" --per-substance "$specialites_par_substance" \
    "$donnees/bdpm-2017-03" "$donnees/interactions-2016-08" "$travail/sources" >"$travail/resume"

# Tables whose hand-written rows replace the imported row of the same first
# column (their key): what the public data can't tell of a product.
remplacees="VDXPROA.tsv VDXIDPRO.tsv VDXVAMST.tsv"
for fichier in "$projet"/data/sample-hand/*.tsv; do
    table=$(basename "$fichier")
    cible="$travail/sources/$table"
    if [ -e "$cible" ]; then
        if [ "$(head -n 1 "$cible")" != "$(head -n 1 "$fichier")" ]; then
            echo "$table: the hand-written columns differ from the imported ones" >&2
            exit 1
        fi
        if [[ " $remplacees " == *" $table "* ]]; then
            awk -F'\t' 'NR == FNR { if (FNR > 1) main[$1] = 1; next } !($1 in main)' "$fichier" "$cible" >"$cible.reste"
            mv "$cible.reste" "$cible"
        fi
        tail -n +2 "$fichier" >>"$cible"
    else
        cp "$fichier" "$cible"
    fi
done
# Fields of imported products the public data can't tell (an act, a price
# with fee left at zeros), set by hand: rows CodeCIP, column, value.
awk -F'\t' -v OFS='\t' '
  NR == FNR { if (FNR > 1) valeur[$1 SUBSEP $2] = $3; next }
  FNR == 1 { for (i = 1; i <= NF; i++) colonne[i] = $i; print; next }
  { for (i = 1; i <= NF; i++) if (($1 SUBSEP colonne[i]) in valeur) $i = valeur[$1 SUBSEP colonne[i]]; print }
' "$projet/data/sample-hand/VDXPRO.champs" "$travail/sources/VDXPRO.tsv" >"$travail/sources/VDXPRO.tsv.champs"
mv "$travail/sources/VDXPRO.tsv.champs" "$travail/sources/VDXPRO.tsv"
cp "$projet/data/sample-hand/ATTRIBUTION.md" "$travail/sources/"

rm -rf "$sortie.new"
mv "$travail/sources" "$sortie.new"
rm -rf "$sortie"
mv "$sortie.new" "$sortie"
grep -P '^\s+VDXPRO\t' "$travail/resume" | sed 's/^ */products: /'
