"""The prescription lines by common name of an import of the public data,
against the public files themselves: each presentation in one line at
most, and every single-substance oral presentation with a dosage in
exactly one; the labels of twenty real lines as read by hand.
    python3 lignes_dc_test.py BDPM_DIR SOURCES_DIR EXPECTED_LABELS"""
import csv
import sys
from collections import defaultdict

bdpm, sources, attendus = sys.argv[1:4]


def lignes(fichier, codage="latin-1"):
    with open(fichier, encoding=codage, newline="") as f:
        return [l.rstrip("\r\n").split("\t") for l in f if l.strip()]


def table(nom):
    rangs = lignes(f"{sources}/{nom}.tsv", "utf-8")
    return [dict(zip(rangs[0], r)) for r in rangs[1:]]


echecs = []
ligne_de = defaultdict(list)
for r in table("VDXYDCIP"):
    ligne_de[r["CodeCIP"]].append(r["CodeDCI"])
libelles = {r["Code"]: r["Libelle"] for r in table("VDXYDCI")}
echecs += [f"presentation {cip} in {len(l)} lines" for cip, l in ligne_de.items() if len(l) > 1]
echecs += [f"line {c} of presentation {cip} not in VDXYDCI" for cip, l in ligne_de.items() for c in l if c not in libelles]
echecs += [f"line code {c} not 8 and six digits" for c in libelles if not (len(c) == 7 and c.isdigit() and c[0] == "8")]

# Single-substance oral specialities with a dosage, homeopathy aside: a
# substance is its fraction when it has one, else itself.
specialites = {r[0]: r for r in lignes(f"{bdpm}/CIS_bdpm.txt")}
composants = defaultdict(list)
for r in lignes(f"{bdpm}/CIS_COMPO_bdpm.txt"):
    composants[r[0]].append(r)
attendues = set()
for cis, s in specialites.items():
    if s[3].strip() != "orale" or "homéo" in s[5] or cis not in composants:
        continue
    c = composants[cis]
    if len({r[1] for r in c}) != 1 or len({r[7] for r in c}) != 1:
        continue
    exprime = [r for r in c if r[6] == "FT"] or [r for r in c if r[6] == "SA"]
    dosage = exprime[0][4].split(" (")[0].split()
    if len(exprime) == 1 and len(dosage) >= 2 and dosage[0][0].isdigit() and not dosage[-1].upper().endswith(("CH", "DH")):
        attendues.add(cis)
presentations = [r for r in lignes(f"{bdpm}/CIS_CIP_bdpm.txt") if r[0] in attendues]
sans = [f"{r[1]} ({specialites[r[0]][1]})" for r in presentations if len(ligne_de.get(r[1], [])) != 1]
if sans:
    echecs.append(f"{len(sans)} of {len(presentations)} single-substance oral presentations outside one line: "
                  + "; ".join(sans[:5]))

# The labels read by hand: a speciality's presentations carry its line.
cip_de = defaultdict(list)
for r in lignes(f"{bdpm}/CIS_CIP_bdpm.txt"):
    cip_de[r[0]].append(r[1])
for cis, attendu in (l for l in lignes(attendus, "utf-8") if not l[0].startswith("#")):
    vus = {libelles.get(c, "(none)") for cip in cip_de[cis] for c in ligne_de.get(cip, ["(none)"])}
    if vus != {attendu}:
        echecs.append(f"{cis}: {sorted(vus)} instead of {attendu!r}")

for e in echecs:
    print("FAILED:", e, file=sys.stderr)
print(f"{len(presentations)} single-substance oral presentations, {len(libelles)} lines")
sys.exit(1 if echecs else 0)
