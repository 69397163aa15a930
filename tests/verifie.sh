# Sourced by the end-to-end test scripts: a scratch directory removed at
# exit, and `verifie` that counts the checks that fail.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
echecs=0
verifie() {  # description, command...
  local quoi=$1; shift
  if ! "$@"; then echo "FAILED: $quoi" >&2; echecs=$((echecs + 1)); fi
}
