#!/usr/bin/env bash
# Builds a doctor's private base beside the sample base: five products of
# the sample with comments (one with accents, one of 512 characters, which
# the library cuts to 511), three pathologies (one with a CISP code of the
# sample) and two posologies with their texts, then lists its products.
#   scripts/sample-medecin.sh [VDX] [BASE] [OUT]
# OUT, the doctor's base, defaults to data/sample-medecin (not committed:
# the tests build it where they work).
set -euo pipefail
cd "$(dirname "$0")/.."
vdx=${1:-build/tools/vdx/vdx}
base=${2:-build/sample-base}
sortie=${3:-data/sample-medecin}
medecin() { "$vdx" medecin --base "$base" "$@" >/dev/null; }

rm -rf "$sortie"
mkdir -p "$sortie"
medecin create "$sortie"
medecin add-product "$sortie" 3595583 "Mon antalgique de première intention"
medecin add-product "$sortie" 3368195 "À éviter chez la femme enceinte"
medecin add-product "$sortie" 2192156 "Statine préférée"
medecin add-product "$sortie" 2756239 "Codéine : prudence"
medecin add-product "$sortie" 3569309 "$(printf 'x%.0s' $(seq 1 512))"
medecin add-pathology "$sortie" "Migraine" K86
medecin add-pathology "$sortie" "Lombalgie chronique"
medecin add-pathology "$sortie" "Suivi du foie"
medecin add-posology "$sortie" 3595583 "Douleur modérée" "Un comprimé, à renouveler après 6 heures si besoin." 1 3
medecin add-posology "$sortie" 2192156 "Le soir" "Un comprimé le soir au coucher." 1 1
"$vdx" medecin --base "$base" list "$sortie"
