#!/usr/bin/env bash
# The open base from the public data, end to end: import, build, then a
# few answers every integrator expects (all presentations counted, known
# couples of the thesaurus found from either side with their level, the
# monograph of any product, the report of real prescriptions, the
# transparency sheets, the history and the identity sheet in a browser).
set -u
vdx=$1
donnees=$2
bibliotheque=$3
source "$(dirname "$0")/verifie.sh"
muet() { "$@" >/dev/null; }
premier() { "$vdx" search --base "$work/base" "$1" 1 | cut -c1-7; }
interactions() { "$vdx" call --base "$work/base" Interactions2_Vdx "$1" "" "" 0 0 0 0 "" | tail -n +2; }
niveaux() {  # the distinct levels of the interactions between two products of a prescription
  interactions "$1" | awk -F'\t' '$2 != "0000000"' | cut -f8 | sort -u | tr '\n' ' '
}

verifie "import" "$vdx" import --keep-going "$donnees/bdpm-2017-03" "$donnees/interactions-2016-08" "$work/sources"
verifie "build" "$vdx" build "$work/sources" "$work/base"
verifie "more than 20,000 products" test "$("$vdx" call --base "$work/base" TotalProduit_Vdx | head -1)" -gt 20000

warfarine=$(premier COUMADINE)
ibuprofene=$(premier "ADVIL 200")
paroxetine=$(premier DEROXAT)
tramadol=$(premier "CONTRAMAL 50")
verifie "warfarin with ibuprofen, advised against" test "$(niveaux "$warfarine@$ibuprofene")" = "3 "
verifie "ibuprofen with warfarin, the same" test "$(niveaux "$ibuprofene@$warfarine")" = "3 "
verifie "paroxetine with tramadol" test -n "$(niveaux "$paroxetine@$tramadol")"
verifie "tramadol with paroxetine" test "$(niveaux "$tramadol@$paroxetine")" = "$(niveaux "$paroxetine@$tramadol")"
# What is taken beside the prescription, and a whole route.
verifie "warfarin alone: St John's wort contra-indicated" \
  test "$(interactions "$warfarine" | awk -F'\t' '$2 == "0000000" && $4 == "Millepertuis"' | cut -f8)" = 4
verifie "sevelamer with any oral product" test "$(niveaux "$(premier RENAGEL)@$warfarine")" = "2 "
verifie "the check prints the couple" grep -q "WARFARINE" <<<"$("$vdx" check --base "$work/base" "$warfarine" "$ibuprofene")"
# The Python package gives the check vdx gives, here for a woman of 70
# with warfarin, ibuprofen and paroxetine.
verifie "the Python package's check is vdx check's" env PYTHONDONTWRITEBYTECODE=1 \
  PYTHONPATH="$(dirname "$0")/../python" VDX32_LIBRARY="$bibliotheque" /usr/bin/python3 - "$work/base" \
  "$("$vdx" check --base "$work/base" --json --age-years 70 --sex F "$warfarine" "$ibuprofene" "$paroxetine")" \
  "$warfarine" "$ibuprofene" "$paroxetine" <<'PY'
import json, sys, vdx32
base, attendu, produits = sys.argv[1], json.loads(sys.argv[2]), sys.argv[3:]
with vdx32.Base(base) as b:
    obtenu = b.check(produits, patient=vdx32.Patient(age_months=840, sex="F")).to_json()
sys.exit(0 if obtenu == attendu and obtenu["interactions"] else 1)
PY

# Real prescriptions: the highest level of each pair, in both orders, as
# a pharmacist reading the thesaurus expects it.
plus_haut() { interactions "$1@$2" | awk -F'\t' '$2 != "0000000" {print $8}' | sort -n | tail -1; }
while IFS=$'\t' read -r a b niveau note; do
  case "$a" in '#'* | '') continue ;; esac
  verifie "$note: level $niveau" test "$(plus_haut "$a" "$b")" = "${niveau/#0/}"
  verifie "$note, the other way round" test "$(plus_haut "$b" "$a")" = "${niveau/#0/}"
done <"$(dirname "$0")/donnees/interactions-reelles.tsv"
# What is taken outside the prescription stays apart from its interactions.
json=$("$vdx" check --base "$work/base" --json "$warfarine" "$ibuprofene")
interactionsJson=$(grep -o '"interactions":\[.*\],"noCouples"' <<<"$json")
verifie "the interactions of the JSON read" grep -q WARFARINE <<<"$interactionsJson"
verifie "St John's wort outside, never among the interactions" test "$(grep -c Millepertuis <<<"$interactionsJson")" = 0
verifie "St John's wort among what to avoid" grep -q '"outside":\[.*Millepertuis' <<<"$json"
# Allergies from the public data: the penicillins, the import's first
# concept, reach amoxicillin's salts and nothing of ibuprofen.
allergies() { "$vdx" call --base "$work/base" ControleAllergies_Vdx "" "$1" "$2" | tail -n +2 | cut -f5; }
amoxicilline=$(premier "CLAMOXYL 1G")
verifie "a penicillin allergy forbids amoxicillin" \
  grep -q "^PENICILLINES -> PENICILLINES : AMOXICILLINE" <<<"$(allergies 30001 "$amoxicilline")"
verifie "an ibuprofen allergy forbids ibuprofen" test -n "$(allergies 2092 "$ibuprofene")"
verifie "a penicillin allergy leaves ibuprofen" test -z "$(allergies 30001 "$ibuprofene")"
# Prescription lines by common name: against the public files (each
# presentation in one line at most, every single-substance oral one with
# a dosage in exactly one) and twenty labels read by hand.
verifie "the lines by common name" /usr/bin/python3 "$(dirname "$0")/lignes_dc_test.py" "$donnees/bdpm-2017-03" \
  "$work/sources" "$(dirname "$0")/donnees/lignes-dc.tsv"
ligne_de() {  # the line of a presentation
  awk -F'\t' -v c="$1" '$2 == c { print $1 }' "$work/sources/VDXYDCIP.tsv"
}
doliprane=$(premier "DOLIPRANE 1000MG CPR")
verifie "DOLIPRANE 1000 mg and a generic paracetamol 1 g tablet share a line" \
  test "$(ligne_de "$doliprane")" = "$(ligne_de "$(premier "PARACETAMOL BIOGARAN 1G CPR")")"
verifie "not an effervescent one" test "$(ligne_de "$doliprane")" != "$(ligne_de "$(premier "DOLIPRANE 1000MG CPR EFF")")"
verifie "the line of DOLIPRANE 1000 mg" test -n "$(ligne_de "$doliprane")"
# A line on the base: a line, no product, its label its own.
ligne=$(ligne_de "$amoxicilline")
verifie "IsMedDC_Vdx knows the line" test "$("$vdx" call --base "$work/base" IsMedDC_Vdx "$ligne")" = 1
verifie "LibelleProduit_Vdx refuses it" test "$("$vdx" call --base "$work/base" LibelleProduit_Vdx "$ligne" 2>/dev/null | head -1)" = -10
verifie "LibelleMedDC2_Vdx gives its label" test "$("$vdx" call --base "$work/base" LibelleMedDC2_Vdx "$ligne" | tail -1)" = \
  "$(awk -F'\t' -v c="$ligne" '$1 == c { print $2 }' "$work/sources/VDXYDCI.tsv")"
verifie "a product is no line" test "$("$vdx" call --base "$work/base" IsMedDC_Vdx "$amoxicilline")" = 0
# Prescribed by common name, warfarin and ibuprofen interact as the products do.
verifie "warfarin and ibuprofen by common name as by product" \
  test "$(niveaux "$(ligne_de "$warfarine")@$(ligne_de "$ibuprofene")")" = "$(niveaux "$warfarine@$ibuprofene")"
verifie "and they do interact" test -n "$(niveaux "$(ligne_de "$warfarine")@$(ligne_de "$ibuprofene")")"
# The codes of the lines stay when the public files come in another order.
mkdir "$work/melange"
for f in "$donnees"/bdpm-2017-03/*.txt; do shuf --random-source=<(yes) "$f" >"$work/melange/$(basename "$f")"; done
verifie "an import of the shuffled files" muet "$vdx" import --keep-going "$work/melange" "$donnees/interactions-2016-08" \
  "$work/sources-melange"
for t in VDXYDCI VDXYDCIP; do
  verifie "$t the same from the shuffled files" cmp -s <(sort "$work/sources/$t.tsv") <(sort "$work/sources-melange/$t.tsv")
done
# Redundancy: two NSAIDs share the thesaurus class filed as T001, two
# paracetamols their substance; the heat wave names ibuprofen once.
redondances() { "$vdx" call --base "$work/base" Surdosage_Vdx "$1" | tail -n +2 | cut -f9,11,13 | tr '\t\n' ': '; }
verifie "two NSAIDs: their listed class" test "$(redondances "$ibuprofene@$(premier "PROFENID 100")")" = ":T001:4 "
verifie "two paracetamols: their substance" \
  test "$(redondances "$(premier "DOLIPRANE 1000")@$(premier "EFFERALGAN 1G")")" = "2202::3 "
canicule=$("$vdx" call --base "$work/base" IsCanicule_Vdx "$ibuprofene")
verifie "ibuprofen in a heat wave, one line" test "$(grep -c "^ - IBUPROF" <<<"$canicule")" = 1
# Posology: no posology in the public data, but the vocabularies, the
# routes and every product's units of take.
verifie "no posology listed" test "$("$vdx" call --base "$work/base" PosoListe_Vdx "$ibuprofene" A 480 70 0 F)" = 1
verifie "no posology exists" test "$("$vdx" call --base "$work/base" PosoExiste_Vdx "$ibuprofene")" = 0
verifie "the units of take of a product" \
  test "$("$vdx" call --base "$work/base" UnitesPrisesProduit_Vdx "$ibuprofene" | tail -n 1 | cut -f1)" -gt 0
verifie "the routes numbered" test "$("$vdx" call --base "$work/base" LibelleVoie_Vdx 1 | head -n 1)" = 1
verifie "the periods with the cycle" test "$("$vdx" call --base "$work/base" PosoDurees_Vdx | wc -l)" = 9
# A posology a host composes gets its sentences and packages: 400 mg of
# ibuprofen, told in its tablets too.
ibuprofene400=$(premier "ADVIL 400")
unites400=$("$vdx" call --base "$work/base" UnitesPrisesProduit_Vdx "$ibuprofene400" | tail -n 1)
dit=$("$vdx" call --base "$work/base" PosoDec_Vdx \
  "400@0@$(cut -f2 <<<"$unites400")@$(cut -f1 <<<"$unites400")@0@1@3@0@1@40@0@5@0@40@0@0@0@0@0@0@@$ibuprofene400@@@" 0 0 | tail -n 1)
verifie "a sentence in mg" test "$(cut -f13 <<<"$dit")" = "400 mg 3 fois par jour pendant 5 jours."
verifie "the same in tablets" grep -q "^1 comprim.  3 fois par jour pendant 5 jours.$" <<<"$(cut -f14 <<<"$dit")"
verifie "15 tablets: two packages of 14" test "$(cut -f16 <<<"$dit")" = "2 plaquettes"
# No dose limit in the public data: nothing to check.
verifie "no limit to check a dose against" test "$("$vdx" call --base "$work/base" CheckPosologie_Vdx \
  "400@0@$(cut -f2 <<<"$unites400")@0@0@0@3@0@1@40@0@5@0@40@0@0@0@0@0@0@@$ibuprofene400@Adulte@@" 70 170 | head -n 1)" = 0
# The price, the fee and the price with it, in cents, and the rates.
eco=$("$vdx" call --base "$work/base" Economique_Vdx "$(premier "DOLIPRANE 1000MG CPR B/8")" | tail -n 1)
verifie "a reimbursed price without and with its fee" \
  test "$(( 10#$(cut -f4 <<<"$eco") + 10#$(cut -f5 <<<"$eco") ))" = "$(( 10#$(cut -f6 <<<"$eco") ))"
verifie "a price" test "$(cut -f4 <<<"$eco")" != 0000000
verifie "its rates" test "$(cut -f1,2 <<<"$eco")" = "$(printf '2.1\t65')"

# The monograph of products across the base: the chapters the public data
# fill, none of them empty, the authorisation's date and status.
chapitres_vides() {
  python3 - "$1" <<'PY'
import re, sys
page = open(sys.argv[1], 'rb').read().decode('cp1252')
for partie in re.split(r'<a name="[^"]*" class="Titreparagraphe">', page)[1:]:
    corps = partie.split('<hr>', 1)[1].split('<div align="center"><table', 1)[0]
    if not corps.replace('</p><p>&nbsp; </p></div>', '').replace('</BODY></HTML>', '').strip():
        print(partie.split('<', 1)[0])
PY
}
for code in $(awk -F'\t' 'NR > 1 && NR % 2000 == 0 {print $1}' "$work/sources/VDXPRO.tsv"); do
  page="$work/monographie-$code.html"
  verifie "monograph of $code" "$vdx" monograph "$work/base" "$code" "$page"
  for ancre in Forme_et_presentation Composition Classes Economique; do
    verifie "$code: $ancre" grep -q "href=\"#$ancre\"" "$page"
  done
  verifie "$code: no chapter empty" test -z "$(chapitres_vides "$page")"
  verifie "$code: the date of the authorisation" grep -q "Date AMM</b></font></td><td[^>]*><font face=\"Arial\">[0-9][0-9]/" "$page"
  verifie "$code: its status" grep -q "Autorisation" "$page"
done
verifie "the conditions of delivery of a listed product" \
  grep -q 'href="#Conditions"' <(cat "$work/monographie-"*.html)

# The interaction report of ten real prescriptions in the browser: each row
# of the check in its order, its pair, severity, kind, risk and conduct.
source "$(dirname "$0")/navigateur.sh"
rang=0
while IFS=$'\t' read -r a b niveau note; do
  case "$a" in '#'* | '') continue ;; esac
  rang=$((rang + 1))
  [ "$rang" -le 10 ] || break
  "$vdx" call --base "$work/base" Interactions2_Vdx "$a@$b" "" "" 0 0 0 0 "" >"$work/lignes-$rang.tsv"
  verifie "$note: its report" test "$("$vdx" call --base "$work/base" Interactions2Html_Vdx "$a@$b" "" "" \
    "$work/rapport-$rang.html" "" 0 0 0 0 "" | head -1)" = "$(head -1 "$work/lignes-$rang.tsv")"
  page "rapport-$rang" --interactions "$work/lignes-$rang.tsv"
done <"$(dirname "$0")/donnees/interactions-reelles.tsv"

# The transparency sheets: a speciality with three SMR opinions has one
# sheet, its opinions newest first.
cis=$(cut -f1 "$donnees/bdpm-2017-03/CIS_HAS_SMR_bdpm.txt" | sort | uniq -c | awk '$1 == 3 {print $2; exit}')
cip=$(awk -F'\t' -v c="$cis" '$1 == c {print $2; exit}' "$donnees/bdpm-2017-03/CIS_CIP_bdpm.txt")
verifie "one transparency sheet for three opinions" \
  test "$("$vdx" call --base "$work/base" FicheTransparence_Vdx "$cip" | head -1)" = 1
verifie "the linked documents written" "$vdx" notice "$work/base" "$cip" "$work/documents"
smr=$(sed '/(ASMR)/,$d' "$work/documents/transparence-$cis.htm" | grep -o '<td>[0-9][0-9]/[0-9][0-9]/[0-9]\{4\}</td>' |
  sed 's|<td>\(..\)/\(..\)/\(....\)</td>|\3\2\1|')
verifie "three opinions" test "$(wc -l <<<"$smr")" = 3
verifie "the newest first" test "$smr" = "$(sort -r <<<"$smr")"
cp "$work/documents/transparence-$cis.htm" "$work/transparence.html"
page transparence "Avis de la commission de la transparence" "Service médical rendu (SMR)"
# The history and the identity sheet of ten products across the base.
for code in $(awk -F'\t' 'NR > 1 && NR % 2000 == 0 {print $1}' "$work/sources/VDXPRO.tsv"); do
  verifie "history of $code" test "$("$vdx" call --base "$work/base" HistoriqueHtml_Vdx "$code" "$work/historique-$code.html" "" |
    head -1)" -gt 0
  verifie "identity of $code" test "$("$vdx" call --base "$work/base" InteroperabiliteHtml_Vdx "$code" \
    "$work/identite-$code.html" "" | head -1)" = 1
  page "historique-$code" "Modifications importantes pour" "Autorisation de mise sur le marché"
  page "identite-$code" "Fiche d'identité interopérable" "Code CIP*"
  if [ "$("$vdx" call --base "$work/base" ExisteFicheTransparence_Vdx "$code")" = 1 ]; then
    verifie "documents of $code" muet "$vdx" notice "$work/base" "$code" "$work/documents-$code"
    cp "$work/documents-$code"/transparence-*.htm "$work/transparence-$code.html"
    page "transparence-$code" "Avis de la commission de la transparence"
  fi
done

[ "$echecs" -eq 0 ] && echo "open base: all checks passed"
exit "$echecs"
