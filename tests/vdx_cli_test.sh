#!/usr/bin/env bash
# The vdx program end to end: build, dump and build again give the same
# sources; bad usage and bad sources give their exit codes and leave no
# base; call prints the code and the rows of a list and of a text.
set -u
vdx=$1
sources=$2
source "$(dirname "$0")/verifie.sh"
code() { "$@" >/dev/null 2>&1; echo $?; }
muet2() { "$@" >/dev/null 2>&1; }

verifie "build" "$vdx" build "$sources" "$work/base"
verifie "dump" "$vdx" dump "$work/base" -o "$work/dump1"
verifie "rebuild" "$vdx" build "$work/dump1" "$work/base2"
verifie "second dump" "$vdx" dump "$work/base2" -o "$work/dump2"
verifie "dumps identical" diff -r "$work/dump1" "$work/dump2"
verifie "dump gives the sources back" diff "$sources/VDXYALD.tsv" "$work/dump1/VDXYALD.tsv"

verifie "existing base refused" test "$(code "$vdx" build "$sources" "$work/base")" = 2
verifie "--force replaces" "$vdx" build --force "$sources" "$work/base"
verifie "unknown command" test "$(code "$vdx" frobnicate)" = 2
verifie "help" "$vdx" call --help
verifie "unknown export" test "$(code "$vdx" call --base "$work/base" Inconnu_Vdx)" = 2
verifie "wrong argument count" test "$(code "$vdx" call --base "$work/base" ListeALD_Vdx 12)" = 2

mkdir "$work/mauvais"
printf 'Code\tLibelle\n01\tun\n02\n' > "$work/mauvais/VDXYALD.tsv"
verifie "ragged line refused" test "$(code "$vdx" build "$work/mauvais" "$work/mauvaise")" = 1
verifie "no base left behind" test ! -e "$work/mauvaise"
"$vdx" build "$work/mauvais" "$work/mauvaise" 2>&1 | grep -q "VDXYALD.tsv:3" || { echo "FAILED: message names file and line" >&2; echecs=$((echecs + 1)); }

sortie=$("$vdx" call --base "$work/base" ListeALD_Vdx)
verifie "list call" test "$(echo "$sortie" | head -2)" = "$(printf '30\n1\tAccident vasculaire cérébral invalidant')"
sortie=$("$vdx" call --base "$work/base" Monnaie_Vdx)
verifie "text call" test "$sortie" = "$(printf '1\nEUR')"
# A pregnant woman at 30 weeks: the pregnancy contra-indications of an
# ibuprofen and pseudoephedrine product, by the conditions of her profile
# (level 9): pregnancy, and the sixth month for a NSAID.
sortie=$("$vdx" call --base "$work/base" ContreIndicationsProfil2_Vdx "" "" "" 3436258 360 60 30 0 F)
verifie "contra-indication of a pregnancy" test "$(echo "$sortie" | grep -c $'^9\t-1\t3436258\t.*\tGrossesse')" = 2
sortie=$("$vdx" call --base "$work/base" ContreIndicationsProfil2_Vdx "" "" "" 3436258 360 60 20 0 F)
verifie "a NSAID before the sixth month" test "$(echo "$sortie" | grep -c $'^9\t-1\t3436258\t')" = 1
sortie=$("$vdx" call --base "$work/base" ContreIndicationsProfil2_Vdx K72 3 7 3595583 360 60 0 0 M)
verifie "contra-indication of a CIM10 code" test "$(echo "$sortie" | head -2 | tail -1 | cut -f1,2,5,7)" = "$(printf '0\t7\t0000000201\tK72.9')"
# The prescriber's commands on real products: warfarin and ibuprofen for a
# woman 30 weeks pregnant, a product, a search.
sortie=$("$vdx" check --base "$work/base" 3026454 3368195 --age-years 30 --sex F --pregnancy 30)
verifie "check lists the prescription" grep -q "3026454  COUMADINE 2MG CPR SEC B/20" <<<"$sortie"
verifie "check finds warfarin with ibuprofen" grep -A1 -q "^  Association déconseillée$" <<<"$sortie"
verifie "check tells the couple" grep -q "COUMADINE 2MG CPR SEC B/20  +  IBUPROFENE EG 400MG CPR PELL B/30" <<<"$sortie"
verifie "check tells the pregnancy" grep -q "contre-indication IBUPROFENE EG 400MG CPR PELL B/30: Grossesse à partir du début du 6e mois (24 SA)  (niveau 9)" <<<"$sortie"
# The count of Interactions2Test_Vdx, from host arrays made of the text.
verifie "Interactions2Test_Vdx counts the rows of Interactions2_Vdx" test \
  "$("$vdx" call --base "$work/base" Interactions2Test_Vdx "3026454@3368195" "" "" 0 0 0 0 "" | head -1)" = \
  "$("$vdx" call --base "$work/base" Interactions2_Vdx "3026454@3368195" "" "" 0 0 0 0 "" | head -1)"
verifie "Interactions_Vdx reads one product a line" test \
  "$("$vdx" call --base "$work/base" Interactions_Vdx "3026454@3368195" | head -1)" = 4
# Erythromycin on the skin meets no couple of the warfarin: it is said to
# be left out; what warfarin meets outside the prescription is apart and
# counted apart.
sortie=$("$vdx" check --base "$work/base" 3026454 3267100)
verifie "check names the local product it leaves out" grep -q "non analysé, voie locale seule : 3267100  ERYFLUID" <<<"$sortie"
verifie "check counts no outside row among the interactions" grep -q "^Interactions (0)" <<<"$sortie"
verifie "check tells what to avoid outside" grep -q "^À éviter en dehors de l'ordonnance (2)" <<<"$sortie"
sortie=$("$vdx" check --base "$work/base" 3026454 3267100 --json)
verifie "check as JSON keeps the outside rows apart" \
  grep -q '"interactions":\[\],"noCouples":false,"noTerms":false,"notAnalysed":\[{"code":"3267100".*"outside":\[{"level":4.*"label2":"Millepertuis"' <<<"$sortie"
sortie=$("$vdx" check --base "$work/base" 3436258 --sex F --pregnancy 30 --json)
verifie "check as JSON" grep -q '^{"prescription":\[{"code":"3436258".*"termLabel":"Grossesse".*"duplicates":\[\]}$' <<<"$sortie"
# Prescription lines by common name: a product's line, a line's products,
# the search of lines, vdx product.
verifie "the line of DOLIPRANE 1000 mg" test "$("$vdx" call --base "$work/base" TraductionDC_Vdx 3595583 | tail -1)" = \
  $'8460133\tPARACÉTAMOL 1 g, comprimé'
verifie "a line gives itself" test "$("$vdx" call --base "$work/base" TraductionDC_Vdx 8460133 | tail -1 | cut -f1)" = 8460133
verifie "a product without a line" test "$("$vdx" call --base "$work/base" TraductionDC_Vdx 6000001)" = 0
verifie "no product, no line" test "$("$vdx" call --base "$work/base" TraductionDC_Vdx 9999999 2>/dev/null | head -1)" = -90
verifie "the products of a line" test "$("$vdx" call --base "$work/base" ProduitsMedDC_Vdx 8460133 | tail -n +2 | cut -f1,3 | tr '\t\n' ': ')" = \
  "5636955:8460133 3595583:8460133 "
for code in 3595583 846013 ""; do
  verifie "ProduitsMedDC_Vdx refuses '$code'" test "$("$vdx" call --base "$work/base" ProduitsMedDC_Vdx "$code" 2>/dev/null | head -1)" -lt 0
done
verifie "search --dci lists the lines" test "$("$vdx" search --base "$work/base" --dci "PARACÉTAMOL 1 g" 2)" = \
  $'8460133  PARACÉTAMOL 1 g, comprimé\n8558579  PARACÉTAMOL 1 g, comprimé effervescent'
# A line stands for its substances in the checks, and the rows name it.
interactions_de() { "$vdx" call --base "$work/base" Interactions2_Vdx "$1" "" "" 0 0 0 0 "" | tail -n +2; }
verifie "warfarin and ibuprofen lines interact as their products" \
  test "$(interactions_de 8140313@8387737 | cut -f5-8)" = "$(interactions_de 3026454@3368195 | cut -f5-8)"
verifie "the rows name the lines" test "$(interactions_de 8140313@8387737 | awk -F'\t' '$2 != "0000000"' | cut -f1,2 | sort -u)" = \
  $'8140313\t8387737'
verifie "an ibuprofen line doubles an ibuprofen product" \
  test "$("$vdx" call --base "$work/base" Surdosage_Vdx "8387737@3368195" | tail -n +2 | cut -f1,2,10,13)" = $'8387737\t3368195\tIBUPROFÈNE\t3'
ci_de() { "$vdx" check --base "$work/base" "$1" --sex F --pregnancy 30 --json | grep -o '"termLabel":"[^"]*","patientCode":"[^"]*"' | sort; }
verifie "a penicillin allergy forbids an amoxicillin line" \
  test "$("$vdx" call --base "$work/base" ControleAllergies_Vdx "" 30501 8346677 | tail -n +2 | cut -f2,4)" = $'8346677\t30501'
verifie "a line has its products' contra-indications" test "$(ci_de 8292501)" = "$(ci_de 3436258)"
verifie "check names the line" grep -q '"prescription":\[{"code":"8292501","label":"CHLORHYDRATE DE PSEUDOÉPHÉDRINE' \
  <<<"$("$vdx" check --base "$work/base" 8292501 --json)"
cisp_de() { "$vdx" call --base "$work/base" RechercheCISP_Vdx "$1" "$2" | tail -n +2; }
verifie "the CISP codes of a CIM10 code and of the codes beneath it" \
  test "$(cisp_de I10 3)|$(cisp_de K72 3)|$(cisp_de K72.9 3)|$(cisp_de K7 3 | cut -f1)" = \
  $'K86\tHypertension non compliquée|D97\tMaladie du foie NCA|D97\tMaladie du foie NCA|D97'
verifie "the CISP codes of a term through its CIM10 codes" test "$(cisp_de 0000000201 1)" = $'D97\tMaladie du foie NCA'
verifie "RechercheCISP_Vdx refuses another type" test "$("$vdx" call --base "$work/base" RechercheCISP_Vdx I10 2 2>/dev/null)" = -20
verifie "the latest SMR and ASMR of a speciality, as the public files give them" \
  test "$("$vdx" call --base "$work/base" ProduitSmrAsmr_Vdx 4992317 | tail -n +2)" = \
  $'Important, Modéré\t09/11/2016\tRenouvellement d\'inscription (CT)\tV\t04/01/2012\tInscription (CT)'
sortie=$("$vdx" product --base "$work/base" 3026454)
verifie "product shows the appearance" grep -q "^  appearance: comprimé rond, lavande, sécable$" <<<"$sortie"
verifie "product shows the excipients with their known effect" \
  test "$("$vdx" product --base "$work/base" 3702458 | grep '^  excipient: ')" = \
  $'  excipient: STÉARATE DE MAGNÉSIUM\n  excipient: ASPARTAM, known effect\n  excipient: SODIUM, known effect'
verifie "product shows the SMR and the scoring" \
  test "$(grep -E '^  (SMR|ASMR|scoring):' <<<"$sortie")" = $'  SMR: Important (01/02/2012, Renouvellement d\'inscription (CT))\n  scoring: in halves'
verifie "product shows the line" grep -q "^  common-name line: 8460133  PARACÉTAMOL 1 g, comprimé$" <<<"$("$vdx" product --base "$work/base" 3595583)"
# The allergies and the substances given twice, in both outputs.
sortie=$("$vdx" check --base "$work/base" 3491317 3368195 3659573 --allergy allergen:30501 --json)
verifie "check as JSON gives the allergy" \
  grep -q '"allergies":\[{"through":"allergen","code":"3491317",[^]]*"cause":"30501","causeText":"PÉNICILLINES -> ' <<<"$sortie"
verifie "check as JSON gives the substance prescribed twice" \
  grep -q '"duplicates":\[{"type":"substance","code1":"3368195",[^]]*"code2":"3659573",[^]]*"substance":"IBUPROFÈNE"' <<<"$sortie"
sortie=$("$vdx" check --base "$work/base" 3491317 3368195 3659573 --allergy allergen:30501)
verifie "check prints the allergy" grep -q "^  AMOXICILLINE MYL 500MG GELULE B/12: PÉNICILLINES -> " <<<"$sortie"
verifie "check prints the duplicate" grep -q "^Doublons (1)" <<<"$sortie"
for mauvaise in "allergen:0" "allergen:x" "poison:12" "term:"; do
    verifie "check refuses --allergy $mauvaise" test "$(code "$vdx" check --base "$work/base" 3491317 --allergy "$mauvaise")" = 2
done
for ordre in "3026454@3368195" "3368195@3026454"; do
    sortie=$("$vdx" call --base "$work/base" Interactions2_Vdx "$ordre" "" "" 0 0 0 0 "")
    verifie "warfarin with ibuprofen ($ordre)" test "$(echo "$sortie" | tail -n +2 | cut -f1,2,8 | grep -c $'^3026454\t3368195\t3$')" = 1
done
sortie=$("$vdx" call --base "$work/base" Interactions2_Vdx "3026454" "" "" 0 0 0 0 "")
verifie "warfarin alone warns of alcohol" test "$(echo "$sortie" | grep -c $'^3026454\t0000000\tCOUMADINE 2MG CPR SEC B/20\tAlcool (boisson ou excipient)\t')" = 1
sortie=$("$vdx" call --base "$work/base" Interactions2_Vdx "3405370@2756239@3026454" "" "" 0 0 0 0 "")
verifie "interactions of several levels" \
    test "$(echo "$sortie" | tail -n +2 | awk -F'\t' '$2 != "0000000"' | cut -f8 | sort -u | tr '\n' ' ')" = "1 2 3 "
verifie "check without product" test "$(code "$vdx" check --base "$work/base")" = 2
verifie "check with a bad pathology" test "$(code "$vdx" check --base "$work/base" 3436258 --pathology x:1)" = 2
verifie "check on no base" test "$(code "$vdx" check --base "$work/nulle-part" 3436258)" = 1
verifie "product" grep -q "CODÉINE (PHOSPHATE DE) HÉMIHYDRATÉ  30 mg" <<<"$("$vdx" product --base "$work/base" 2756239)"
verifie "deleted product marked" grep -q "deleted on 02/03/2015" <<<"$("$vdx" product --base "$work/base" 2192297)"
verifie "unknown product" test "$(code "$vdx" product --base "$work/base" 9999999)" = 1
verifie "search" test "$("$vdx" search --base "$work/base" "COUMADINE 5" | cut -c1-7)" = 3569309
# A criteria search on one set, file after file: antibiotics of lower
# respiratory infections, then none with a condition of a woman of 70,
# then none adding an interaction to warfarin: amoxicillin alone stays.
exemples=$(dirname "$0")/../data/search-examples
sortie=$("$vdx" search-set --base "$work/base" --sex F --age-years 70 "$exemples/1-indication.txt" \
    "$exemples/2-patient.txt" "$exemples/3-warfarin.txt" 2>/dev/null)
verifie "search-set tells each call's count" test "$(echo "$sortie" | grep -c '\.txt: [0-9]*$')" = 3
verifie "search-set keeps amoxicillin alone" test "$(echo "$sortie" | grep -c '^[0-9]*  [0-9]\{7\}  AMOXICILLINE')" = \
    "$(echo "$sortie" | grep -c '^[0-9]*  [0-9]\{7\}  ')"
verifie "search-set without a file" test "$(code "$vdx" search-set --base "$work/base")" = 2
verifie "search-set of a missing file" test "$(code "$vdx" search-set --base "$work/base" "$work/nulle-part.txt")" = 1
# A base without couples says so, rather than reporting none found; its
# build names the table it built empty; a source that is no file fails.
mkdir "$work/sans-couples"
cp "$sources"/*.tsv "$work/sans-couples/" && rm "$work/sans-couples/VDXZICOU.tsv"
verifie "build names a table without source" \
  grep -q "tables without a source, built empty:.* VDXZICOU" <<<"$("$vdx" build "$work/sans-couples" "$work/base-sans-couples" 2>&1)"
sortie=$("$vdx" check --base "$work/base-sans-couples" 3026454 3368195)
verifie "check says the base holds no couple" grep -q "la base ne contient aucun couple d'interactions" <<<"$sortie"
verifie "check as JSON says it too" grep -q '"noCouples":true' <<<"$("$vdx" check --base "$work/base-sans-couples" 3026454 --json)"
verifie "a full base says nothing of it" grep -q '"noCouples":false,"noTerms":false' <<<"$("$vdx" check --base "$work/base" 3026454 --json)"
mkdir "$work/sans-couples/VDXZICOU.tsv"
verifie "a source that is a directory fails the build" test "$(code "$vdx" build "$work/sans-couples" "$work/base-dossier")" = 1
# Every command reading a base takes it the same way, or from VDX_BASE.
verifie "the base from the environment" test "$(VDX_BASE="$work/base" "$vdx" search "COUMADINE 5" | cut -c1-7)" = 3569309
verifie "product without a base" test "$(VDX_BASE= code "$vdx" product 2756239)" = 2
verifie "missing base" test "$(code "$vdx" call --base "$work/nulle-part" ListeALD_Vdx)" = 1

# The sample's update files on a copy of its base: a new laboratory, a
# renamed one, rows of an unknown table passed over, a row of every table,
# a product renamed, the date moved; a file with a row cut short stops.
cp -r "$work/base" "$work/maj"
verifie "maj applies the sample's files" test "$(code "$vdx" maj "$work/maj" "$(dirname "$sources")/sample-maj")" = 0
verifie "a new laboratory" test "$("$vdx" call --base "$work/maj" LibelleLaboratoire_Vdx NOVB | tail -n 1)" = "LABORATOIRE SUIVANT"
verifie "a renamed one" test "$("$vdx" call --base "$work/maj" LibelleLaboratoire_Vdx SAN1 | tail -n 1)" = "SANOFI AVENTIS (MAJ)"
verifie "the date moved" test "$("$vdx" call --base "$work/maj" Version_Vdx | tail -n 1 | cut -f2)" = 04/03/2017
verifie "a new label" test "$("$vdx" call --base "$work/maj" LibelleProduit_Vdx 2192156 | tail -n 1)" = \
  "PRAVASTATINE EVOLUGE 20MG CPR B/30"
verifie "found by it" test "$("$vdx" search --base "$work/maj" "PRAVASTATINE EVOLUGE 20MG CPR B/3" | cut -c1-7)" = 2192156
mkdir "$work/maj-echec"
printf '|DEBUT|05/03/2017@x@\r\n|LABF|NOVC@AUTRE@@\r\n|PRO|3000001@x@\r\n|FIN|' >"$work/maj-echec/RE170305.VDX"
verifie "maj stops on a row cut short" test "$(code "$vdx" maj "$work/maj" "$work/maj-echec")" = 1
verifie "and the file is not applied" test "$("$vdx" call --base "$work/maj" LibelleLaboratoire_Vdx NOVC | head -1)" = -90
verifie "maj without its arguments" test "$(code "$vdx" maj "$work/maj")" = 2

# The round trip: the sample's tables that the update writes, exported as
# an update file and applied to the base built without their rows, give
# the tables of the base built with them.
tables_maj="VDXPRO VDXLAB VDXFAM VDXFAMP VDXPROA VDXIDPRO VDXIDFOP VDXIDFOR VDXIDPRE VDXIDUPR VDXIDCON VDXIDUCO
  VDXCLA VDXCLAP VDXPPROD VDXPTEXT VDXPPTER VDXPIND VDXPNAT VDXPVOI VDXPPRO VDXPMOM VDXPUPRI VDXVCOMP VDXVPAP
  VDXVCOMG VDXVCOME VDXVEXCP VDXVPA VDXVEXC VDXVPAE VDXVPAU VDXVAMPC VDXVAMM VDXVAMMC VDXVAMPT VDXVAMST VDXYATC
  VDXYATCP VDXIDPVO VDXZICLA VDXZICLC VDXZICLP VDXZICOU"
mkdir "$work/sans" "$work/rt"
cp "$sources"/*.tsv "$work/sans"/
for t in $tables_maj; do [ -f "$work/sans/$t.tsv" ] && head -n 1 "$sources/$t.tsv" >"$work/sans/$t.tsv"; done
verifie "export-maj" muet2 "$vdx" export-maj "$sources" "$work/rt/RE991231.VDX" --date 31/12/2099
verifie "the base without those rows" muet2 "$vdx" build "$work/sans" "$work/base-sans"
verifie "the export applied" muet2 "$vdx" maj "$work/base-sans" "$work/rt"
"$vdx" dump "$work/base" -o "$work/rt-attendu" $tables_maj >/dev/null 2>&1
"$vdx" dump "$work/base-sans" -o "$work/rt-obtenu" $tables_maj >/dev/null 2>&1
verifie "the round trip gives the same tables" diff -r "$work/rt-attendu" "$work/rt-obtenu"

# A doctor's private base beside the sample's.
mkdir "$work/medecins"
verifie "medecin create" test "$("$vdx" medecin --base "$work/base" create "$work/medecins/MED")" = 1
verifie "a name too long" test "$(code "$vdx" medecin --base "$work/base" create "$work/medecins/MEDECIN")" = 1
"$vdx" medecin --base "$work/base" add-product "$work/medecins/MED" 3595583 "Mon choix" >/dev/null
verifie "a pathology under the next code" test "$("$vdx" medecin --base "$work/base" add-pathology "$work/medecins/MED" Migraine | tail -n 1)" = 0000001
verifie "the doctor's products" test "$("$vdx" medecin --base "$work/base" list "$work/medecins/MED" DOLI | tail -n 1 | cut -f1,3)" = "3595583	Mon choix"
verifie "call with the doctor's base" test "$("$vdx" call --base "$work/base" --medecin "$work/medecins/MED" CommentaireMedecin_Vdx 3595583 | tail -n 1)" = "Mon choix"
verifie "the sample's doctor's base" muet2 bash "$(dirname "$0")/../scripts/sample-medecin.sh" "$vdx" "$work/base" "$work/medecins/SMED"
verifie "a comment cut to 511" test "$("$vdx" call --base "$work/base" --medecin "$work/medecins/SMED" CommentaireMedecin_Vdx 3569309 | tail -n 1 | wc -c)" = 512
verifie "a posology with its text" grep -q "Un comprimé le soir" <<<"$("$vdx" call --base "$work/base" --medecin "$work/medecins/SMED" PosoLoad_Vdx "#2192156000")"
verifie "an unknown action" test "$(code "$vdx" medecin --base "$work/base" erase "$work/medecins/MED")" = 2

[ "$echecs" -eq 0 ] && echo "vdx: all checks passed"
exit "$echecs"
