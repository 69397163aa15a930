# Sourced by the end-to-end tests of pages, after verifie.sh: headless
# Chromium, and `page`, which loads a page of $work and checks it.
navigateur() { chromium --headless --no-sandbox --disable-gpu "$@"; }

# page NAME ARG...: loads $work/NAME.html and checks it with pages.py and
# its ARGs; then that a frame reads it as windows-1252.
page() {
  local nom=$1; shift
  local fichier="$work/$nom.html"
  navigateur --enable-logging=stderr --v=0 --dump-dom "file://$fichier" >"$work/$nom.dom" 2>"$work/$nom.console"
  navigateur --screenshot="$work/$nom.png" --window-size=800,600 "file://$fichier" >/dev/null 2>&1
  verifie "$nom in the browser" python3 "$(dirname "${BASH_SOURCE[0]}")/pages.py" "$fichier" "$work/$nom.dom" \
    "$work/$nom.console" "$work/$nom.png" "$@"
  printf '<html><body><iframe src="%s"></iframe><script>document.querySelector("iframe").onload = function () {
document.body.setAttribute("data-charset", this.contentDocument.characterSet); };</script></body></html>' \
    "$nom.html" >"$work/cadre-$nom.html"
  navigateur --allow-file-access-from-files --virtual-time-budget=3000 --dump-dom "file://$work/cadre-$nom.html" \
    2>/dev/null | grep -q 'data-charset="windows-1252"' || { echo "FAILED: $nom read as windows-1252" >&2; echecs=$((echecs + 1)); }
}

# images NAME: every picture of $work/NAME.html loads in a frame (none
# broken: each complete, with a width).
images() {
  local nom=$1
  printf '<html><body><iframe src="%s"></iframe><script>document.querySelector("iframe").onload = function () {
var i = Array.from(this.contentDocument.images);
document.body.setAttribute("data-images", i.length + "/" + i.filter(function (x) { return x.complete && x.naturalWidth > 0; }).length);
};</script></body></html>' "$nom.html" >"$work/images-$nom.html"
  local vu
  vu=$(navigateur --allow-file-access-from-files --virtual-time-budget=3000 --dump-dom "file://$work/images-$nom.html" \
    2>/dev/null | grep -o 'data-images="[0-9]*/[0-9]*"')
  case "$vu" in
    'data-images="'*) [ "${vu#*\"}" != "0/0\"" ] && [ "$(echo "$vu" | sed 's/.*"\([0-9]*\)\/\([0-9]*\)"/\1/')" = \
      "$(echo "$vu" | sed 's/.*"\([0-9]*\)\/\([0-9]*\)"/\2/')" ] && return 0 ;;
  esac
  echo "FAILED: the pictures of $nom load ($vu)" >&2
  echecs=$((echecs + 1))
}
