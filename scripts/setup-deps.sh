#!/usr/bin/env bash
# Installs the Debian packages the build, the tests, the benchmarks and the
# fuzz build need, only those that are missing: clang, and libFuzzer's and
# the sanitizers' runtimes from libclang-rt-14-dev; python3 for the Python
# host test; python3-pytest, python3-pip, python3-setuptools and
# python3-wheel for the Python package's tests and its install;
# cpp-httplib and nlohmann-json for the service, python3-jsonschema for
# its answers, wrk for its load test; chromium for the pages in a real
# browser.
set -euo pipefail
paquets=(cmake ninja-build g++ pkg-config liblmdb-dev libgtest-dev libgmock-dev googletest libbenchmark-dev clang libclang-rt-14-dev python3 python3-pytest python3-pip python3-setuptools python3-wheel python3-jsonschema libcpp-httplib-dev nlohmann-json3-dev wrk chromium)
manquants=()
for p in "${paquets[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || manquants+=("$p")
done
if [ ${#manquants[@]} -gt 0 ]; then
  echo "installing: ${manquants[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${manquants[@]}"
fi
