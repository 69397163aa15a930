#!/usr/bin/env bash
# A bounded load test of vdx serve on loopback with wrk: POST /v1/check of
# a prescription of five products (warfarin, ibuprofen, paroxetine,
# amiodarone, simvastatin) for a woman of 70, 2 workers, 2 connections, for
# SECONDS (10). Then the same while one worker is killed (SIGKILL) every
# second: the requests lost are those the killed workers held, at most one
# each. Prints wrk's report of each run and a summary line.
#   bash bench/service_load.sh build/tools/vdx/vdx build/open-base [SECONDS [CONNECTIONS]]
set -euo pipefail
vdx=$1
base=$2
secondes=${3:-10}
connexions=${4:-2}

work=$(mktemp -d)
service=
trap '[ -n "$service" ] && kill "$service" 2>/dev/null; wait 2>/dev/null; rm -rf "$work"' EXIT

code() { "$vdx" search --base "$base" "$1" 1 | cut -c1-7; }
produits=()
for libelle in COUMADINE "ADVIL 200" DEROXAT CORDARONE ZOCOR; do
  c=$(code "$libelle")
  [ -n "$c" ] || { echo "no product $libelle in $base" >&2; exit 1; }
  produits+=("\"$c\"")
done
corps="{\"products\":[$(IFS=,; echo "${produits[*]}")],\"patient\":{\"ageMonths\":840,\"sex\":\"F\"}}"
cat >"$work/check.lua" <<EOF
wrk.method = "POST"
wrk.body = '$corps'
wrk.headers["Content-Type"] = "application/json"
EOF

"$vdx" serve --base "$base" --listen 127.0.0.1:0 --workers 2 >"$work/service.log" 2>&1 &
service=$!
for _ in $(seq 100); do grep -q "serving" "$work/service.log" && break; sleep 0.1; done
port=$(sed -n 's/.*:\([0-9]*\)\/ with.*/\1/p' "$work/service.log")
adresse="http://127.0.0.1:$port/v1/check"
reponse=$(wrk_corps=$corps python3 -c '
import json, os, sys, urllib.request
r = urllib.request.urlopen(urllib.request.Request(sys.argv[1], os.environ["wrk_corps"].encode(), {"Content-Type": "application/json"}))
c = json.load(r)
print(len(c["interactions"]), "interactions,", len(c["contraindications"]), "contra-indications")' "$adresse")
echo "the prescription: $corps -> $reponse"

charge() { wrk -t1 -c"$connexions" -d"${secondes}s" --latency -s "$work/check.lua" "$adresse"; }
# Milliseconds of a wrk latency ("812.00us", "1.20ms", "2.00s").
ms() { awk -v v="$1" 'BEGIN { n = v + 0; if (v ~ /us$/) n /= 1000; else if (v ~ /[0-9]s$/) n *= 1000; printf "%.2f", n }'; }
resume() {
  local rapport=$1
  local rps p50 p99 erreurs non2xx
  rps=$(awk '/Requests\/sec/ { print $2 }' <<<"$rapport")
  p50=$(ms "$(awk '$1 == "50%" { print $2 }' <<<"$rapport")")
  p99=$(ms "$(awk '$1 == "99%" { print $2 }' <<<"$rapport")")
  erreurs=$(awk '/Socket errors/ { gsub(",", ""); print $4 + $6 + $8 + $10 }' <<<"$rapport")
  non2xx=$(awk '/Non-2xx/ { print $5 }' <<<"$rapport")
  echo "$rps checks/s, p50 ${p50} ms, p99 ${p99} ms, ${erreurs:-0} socket errors, ${non2xx:-0} non-2xx"
}

echo "== steady, 2 workers, $connexions connections, ${secondes}s"
rapport=$(charge)
echo "$rapport"
stable=$(resume "$rapport")

echo "== one worker killed every second"
(
  for _ in $(seq $((secondes - 1))); do
    sleep 1
    victime=$(tr ' ' '\n' <"/proc/$service/task/$service/children" | grep . | shuf -n1)
    [ -n "$victime" ] && kill -9 "$victime" && echo x >>"$work/tues"
  done
) &
tueur=$!
rapport=$(charge)
wait "$tueur"
echo "$rapport"
tues=$(wc -l <"$work/tues" 2>/dev/null || echo 0)
echo "steady: $stable"
echo "killing: $(resume "$rapport"); $tues workers killed"
