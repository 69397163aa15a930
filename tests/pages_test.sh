#!/usr/bin/env bash
# The pages of the documents in a real browser: the monographs of the sample's
# three products with texts (every chapter, some chapters empty, a deleted
# product), the short form and the page of the flags, the reports of the
# checks of the README's prescriptions, each loaded in headless Chromium. A page renders (its screenshot is not blank), logs no
# console message, has an anchor for each of its links and a chapter for
# each entry of its summary, shows its titles and its code page 1252 letters
# right, and is read as windows-1252. The stylesheet's path comes out
# escaped inside its attribute. The notice's pictures load.
set -u
vdx=$1
base=$2
source "$(dirname "$0")/verifie.sh"
source "$(dirname "$0")/navigateur.sh"
muet() { "$@" >/dev/null; }
css='st"y&le.css'

verifie "monograph" "$vdx" monograph "$base" 3595583 "$work/complete.html" --css "$css"
verifie "monograph, some chapters" "$vdx" monograph "$base" 3368195 "$work/partielle.html"
verifie "monograph, deleted" "$vdx" monograph "$base" 2192297 "$work/supprime.html"
verifie "short monograph" muet "$vdx" call --base "$base" MonographieHtml2_Vdx 3595583 "$work/courte.html" ""
verifie "flags" muet "$vdx" call --base "$base" InfoHtml_Vdx 3691068 "$work/info.html" ""

page complete "DOLIPRANE 1000MG CPR B/8" "PARACÉTAMOL" "œdème" "Forme et présentation" "Classes ATC" "Indications" \
  "Grossesse et allaitement" "Source AFSSAPS du" "Source RCP du 30/06/2015" "Données de l'AMM:" "Aspect" \
  "Conditions particulières de délivrance" "Données technico-réglementaires" " AMM du 30/06/2015 " \
  "Casher pour Pâque kitniot - lait non surveillé (source MEDIEL)" "Mot Clé 0000000599 inexistant." \
  'href="st&quot;y&amp;le.css"'
page partielle "Indications" "Effets indésirables" "Composition" "(excipient à effet notoire)"
page supprime "( Produit supprimé depuis le " "Contre indications" "Données Particulières" \
  "En rapport direct et incontestable avec les affections exonérées :"
page courte "Indications" "Effets indésirables" "Données technico-réglementaires"
page info "Referent" "générique" "Dopant" "Hospitalier" "Canicule" "Recommandations" "Mediel" "OUI"
# The reports: warfarin with ibuprofen for the pregnant woman with an ulcer,
# then allergies and redundancies.
verifie "check --html" muet "$vdx" check --base "$base" 3026454 3368195 --age-years 30 --sex F --pregnancy 30 \
  --pathology cim10:K26 --html "$work"
"$vdx" call --base "$base" Interactions2_Vdx "3026454@3368195" "" "" 360 0 30 0 F >"$work/lignes.tsv"
verifie "allergies report" muet "$vdx" call --base "$base" ControleAllergiesHtml_Vdx "" 30501 "3491317@3368195" \
  "$work/allergies.html" "$css" 1
verifie "redundancy report" muet "$vdx" call --base "$base" SurdosageHtml_Vdx "3368195@2661869@3659573@3405370@3691068" \
  "$work/surdosage.html" ""
page interactions "4 Interactions" "Sujet de plus de 70 ans" --interactions "$work/lignes.tsv"
verifie "two rows of one pair close it once" test "$(grep -c 'cellpadding="20"' "$work/interactions.html")" = 1
page contre-indications "Contre Indication(s) absolue(s) :" "Grossesse" "Ulcère gastroduodénal en évolution"
page allergies "Allergie(s) avec " 'href="st&quot;y&amp;le.css"'
page surdosage "Risque de surdosage" "appartiennent à la même classe chimique"

# The side documents: the notice with its pictures, the history, the
# identity sheet and a transparency sheet.
verifie "notice" muet "$vdx" notice "$base" 3595583 "$work"
mv "$work/notice-3595583.html" "$work/notice.html"
verifie "history" muet "$vdx" call --base "$base" HistoriqueHtml_Vdx 3595583 "$work/historique.html" "$css"
verifie "identity sheet" muet "$vdx" call --base "$base" InteroperabiliteHtml_Vdx 3595583 "$work/identite.html" ""
mv "$work/transparence-60234100.htm" "$work/transparence.html"
page notice "DOLIPRANE 1000 mg, comprimé" "Veuillez lire attentivement cette notice"
images notice
page historique "Modifications importantes pour DOLIPRANE 1000MG CPR B/8" "Autorisation de mise sur le marché" \
  "09/07/2002" "Déclaration de commercialisation" 'href="st&quot;y&amp;le.css"'
page identite "Fiche d'identité interopérable" "Code CIP*" "Code UCD" "DOLIPRANE 1000MG CPR B/8"
page transparence "Avis de la commission de la transparence" "Service médical rendu (SMR)"

verifie "the stylesheet's path escaped in the file" grep -q 'href="st&quot;y&amp;le.css"' "$work/complete.html"
verifie "no stylesheet without a path" test "$(grep -c stylesheet "$work/partielle.html")" = 0
verifie "the short form leaves the further texts" test "$(grep -c 'name="Interactions"' "$work/courte.html")" = 0

[ "$echecs" -eq 0 ] || { echo "$echecs check(s) failed" >&2; exit 1; }
echo "pages: all checks passed"
