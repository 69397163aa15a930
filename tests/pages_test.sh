#!/usr/bin/env bash
# The pages of the documents in a real browser: the monographs of the sample's
# three products with texts (every chapter, some chapters empty, a deleted
# product), the short form and the page of the flags, each loaded in
# headless Chromium. A page renders (its screenshot is not blank), logs no
# console message, has an anchor for each of its links and a chapter for
# each entry of its summary, shows its titles and its code page 1252 letters
# right, and is read as windows-1252. The stylesheet's path comes out
# escaped inside its attribute.
set -u
vdx=$1
base=$2
source "$(dirname "$0")/verifie.sh"
navigateur() { chromium --headless --no-sandbox --disable-gpu "$@"; }
css='st"y&le.css'

# page NAME PRODUCT TEXT...: loads the page NAME and checks it.
page() {
  local nom=$1; shift
  local fichier="$work/$nom.html"
  navigateur --enable-logging=stderr --v=0 --dump-dom "file://$fichier" >"$work/$nom.dom" 2>"$work/$nom.console"
  navigateur --screenshot="$work/$nom.png" --window-size=800,600 "file://$fichier" >/dev/null 2>&1
  verifie "$nom in the browser" python3 "$(dirname "$0")/pages.py" "$fichier" "$work/$nom.dom" \
    "$work/$nom.console" "$work/$nom.png" "$@"
  printf '<html><body><iframe src="%s"></iframe><script>document.querySelector("iframe").onload = function () {
document.body.setAttribute("data-charset", this.contentDocument.characterSet); };</script></body></html>' \
    "$nom.html" >"$work/cadre-$nom.html"
  navigateur --allow-file-access-from-files --virtual-time-budget=3000 --dump-dom "file://$work/cadre-$nom.html" \
    2>/dev/null | grep -q 'data-charset="windows-1252"' || { echo "FAILED: $nom read as windows-1252" >&2; echecs=$((echecs + 1)); }
}

verifie "monograph" "$vdx" monograph "$base" 3595583 "$work/complete.html" --css "$css"
verifie "monograph, some chapters" "$vdx" monograph "$base" 3368195 "$work/partielle.html"
verifie "monograph, deleted" "$vdx" monograph "$base" 2192297 "$work/supprime.html"
verifie "short monograph" "$vdx" call --base "$base" MonographieHtml2_Vdx 3595583 "$work/courte.html" "" >/dev/null
verifie "flags" "$vdx" call --base "$base" InfoHtml_Vdx 3691068 "$work/info.html" "" >/dev/null

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
verifie "the stylesheet's path escaped in the file" grep -q 'href="st&quot;y&amp;le.css"' "$work/complete.html"
verifie "no stylesheet without a path" test "$(grep -c stylesheet "$work/partielle.html")" = 0
verifie "the short form leaves the further texts" test "$(grep -c 'name="Interactions"' "$work/courte.html")" = 0

[ "$echecs" -eq 0 ] || { echo "$echecs check(s) failed" >&2; exit 1; }
echo "pages: all checks passed"
