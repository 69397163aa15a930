#!/usr/bin/env bash
# What the Windows builds need, installed when missing: Debian's mingw-w64
# toolchains and wine64; and LMDB's sources from Debian's own source package
# (the version of the Linux build), unpacked in the directory given
# (default build-win/lmdb). Prints that directory.
set -euo pipefail
cd "$(dirname "$0")/.."
cible=${1:-build-win/lmdb}
sudo_cmd=""
[ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"

paquets=(g++-mingw-w64-i686 g++-mingw-w64-x86-64 wine64 dpkg-dev)
manquants=()
for p in "${paquets[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || manquants+=("$p")
done
if [ ${#manquants[@]} -gt 0 ]; then
  echo "installing: ${manquants[*]}" >&2
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${manquants[@]}" >&2
fi

if [ ! -f "$cible/libraries/liblmdb/mdb.c" ]; then
  # A deb-src entry for the suites of the existing deb entries, same URIs and keyring.
  liste=/etc/apt/sources.list.d/vdx32-sources.sources
  if ! grep -rqs "deb-src" /etc/apt/sources.list /etc/apt/sources.list.d/; then
    for f in /etc/apt/sources.list.d/*.sources; do
      [ -f "$f" ] && [ "$f" != "$liste" ] || continue
      sed -e 's/^Types: deb$/Types: deb-src/' "$f"
      echo
    done | $sudo_cmd tee "$liste" >/dev/null
    $sudo_cmd apt-get update -qq
  fi
  version=$(dpkg-query -W -f='${source:Version}' liblmdb-dev 2>/dev/null || true)
  tmp=$(mktemp -d)
  (cd "$tmp" && apt-get source --download-only -qq "lmdb${version:+=$version}" >&2)
  mkdir -p "$cible"
  tar -xzf "$tmp"/lmdb_*.orig.tar.gz -C "$cible" --strip-components=1
  rm -rf "$tmp"
fi
echo "$cible"
