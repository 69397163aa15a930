"""vdx serve on the sample base, from outside: each endpoint against the same
call through the C API (the vdx32 package and vdx), every answer validated
against the service's own openapi.json, the bad requests, a failure of the
library, a worker killed during a request, a request that stalls, and the
page in headless Chromium. VDX_PROGRAMME names vdx, VDX_BASE the sample
base, VDX32_LIBRARY the library."""
import http.client
import json
import os
import re
import shutil
import signal
import socket
import subprocess
import tempfile
import time
import urllib.parse

import jsonschema
import pytest

import vdx32

VDX = os.environ["VDX_PROGRAMME"]
BASE = os.environ["VDX_BASE"]


class Service:
    """A running vdx serve; every answer it gives is checked against its
    OpenAPI description."""

    def __init__(self, base, *options):
        self.processus = subprocess.Popen([VDX, "serve", "--base", base, "--listen", "127.0.0.1:0", *options],
                                          stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        ligne = self.processus.stdout.readline().decode()
        m = re.search(r"http://127\.0\.0\.1:(\d+)/", ligne)
        assert m, ligne + self.processus.stderr.read().decode()
        self.port = int(m.group(1))
        self.description = None
        self.description = self.json("GET", "/openapi.json")[1]

    def travailleurs(self):
        with open(f"/proc/{self.processus.pid}/task/{self.processus.pid}/children") as f:
            return sorted(int(p) for p in f.read().split())

    def attend_travailleurs(self, nombre, sauf=()):
        for _ in range(100):
            t = self.travailleurs()
            if len(t) == nombre and not set(t) & set(sauf):
                return t
            time.sleep(0.05)
        raise AssertionError(f"workers: {self.travailleurs()}")

    def requete(self, methode, chemin, corps=None):
        connexion = http.client.HTTPConnection("127.0.0.1", self.port, timeout=10)
        try:
            connexion.request(methode, chemin, body=corps, headers={"Content-Type": "application/json"} if corps else {})
            r = connexion.getresponse()
            return r.status, r.getheader("Content-Type"), r.read()
        finally:
            connexion.close()

    def json(self, methode, chemin, corps=None):
        if isinstance(corps, (dict, list)):
            corps = json.dumps(corps)
        statut, type_contenu, octets = self.requete(methode, chemin, corps)
        assert type_contenu == "application/json; charset=utf-8", (chemin, type_contenu)
        reponse = json.loads(octets.decode("utf-8"))
        if self.description:
            valide(self.description, methode, chemin, statut, reponse)
        return statut, reponse

    def arrete(self):
        self.processus.send_signal(signal.SIGTERM)
        assert self.processus.wait(timeout=10) == 0


def valide(description, methode, chemin, statut, reponse):
    """The answer against the schema the description gives for its path,
    method and status."""
    chemin = chemin.split("?")[0]
    for modele, operations in description["paths"].items():
        if re.fullmatch(re.sub(r"\{[^}]+\}", "[^/]*", modele), chemin) and methode.lower() in operations:
            break
    else:
        assert statut == 404, chemin  # no operation: only "no such resource"
        modele, operations = None, {"get": {"responses": {"404": {"$ref": "#/components/responses/NotFound"}}}}
    declaree = operations[methode.lower()]["responses"].get(str(statut))
    assert declaree, f"{methode} {chemin}: status {statut} not described"
    if "$ref" in declaree:
        declaree = description["components"]["responses"][declaree["$ref"].split("/")[-1]]
    schema = declaree["content"]["application/json"]["schema"]
    resolveur = jsonschema.RefResolver.from_schema(description)
    jsonschema.Draft202012Validator(schema, resolver=resolveur).validate(reponse)


def vdx(*arguments):
    return subprocess.run([VDX, *arguments], check=True, capture_output=True).stdout.decode("utf-8")


def rangs(sortie):
    return [ligne.split("\t") for ligne in sortie.splitlines()[1:]]


@pytest.fixture(scope="module")
def service():
    s = Service(BASE, "--workers", "2", "--timeout", "1")
    yield s
    travailleurs = s.travailleurs()
    s.arrete()
    for p in travailleurs:
        assert not os.path.exists(f"/proc/{p}/status") or "zombie" in open(f"/proc/{p}/status").read()


@pytest.fixture(scope="module")
def c_api():
    with vdx32.Base(BASE) as b:
        yield b


def test_the_description_is_openapi_3_and_describes_every_endpoint(service):
    d = service.description
    assert d["openapi"].startswith("3.")
    assert set(d["paths"]) == {"/v1/products/{code}", "/v1/products", "/v1/check", "/v1/check/report", "/v1/base",
                               "/openapi.json"}
    statut, type_contenu, page = service.requete("GET", "/")
    assert statut == 200 and type_contenu.startswith("text/html") and "Vérification".encode() in page


def test_a_product_is_the_c_apis(service, c_api):
    for code in ["3026454", "3595583", "3491317"]:
        statut, p = service.json("GET", f"/v1/products/{code}")
        attendu = c_api.product(code)
        assert statut == 200
        assert (p["code"], p["label"], p["cis"] or "", p["cip13"] or "", p["deletedOn"] or "") == \
               (code, attendu.label, attendu.cis, attendu.cip13, attendu.deleted_on)
        # A first row of the texts, then a row a component: its label, then its quantity.
        composition = rangs(vdx("call", "--base", BASE, "ProduitPA_Vdx", code))
        assert p["composition"]["expressedFor"] == composition[0][0]
        assert [(s["label"], s["quantity"]) for s in p["composition"]["substances"]] == \
               [(r[3], r[4]) for r in composition[1:]]
    # Its line by common name as TraductionDC_Vdx gives it.
    ligne = service.json("GET", "/v1/products/3595583")[1]["commonNameLine"]
    assert [ligne["code"], ligne["label"]] == rangs(vdx("call", "--base", BASE, "TraductionDC_Vdx", "3595583"))[0]
    assert service.json("GET", "/v1/products/6000001")[1]["commonNameLine"] is None
    # Warfarin's price and rates as Economique_Vdx gives them.
    economie = rangs(vdx("call", "--base", BASE, "Economique_Vdx", "3026454"))[0]
    prix = service.json("GET", "/v1/products/3026454")[1]["price"]
    assert (prix["vatRate"], prix["reimbursementRate"], prix["cents"]) == (float(economie[0]), float(economie[1]),
                                                                          int(economie[3]))


def test_the_search_pages_as_the_c_api(service, c_api):
    statut, page = service.json("GET", "/v1/products?q=IBU&limit=3")
    assert statut == 200
    assert [(p["code"], p["label"]) for p in page["products"]] == [(r.code, r.label) for r in c_api.search("IBU", limit=3)]
    statut, suite = service.json("GET", "/v1/products?q=IBU&limit=3&after=" + page["next"].replace(" ", "%20"))
    assert [(p["code"], p["label"]) for p in suite["products"]] == \
           [(r.code, r.label) for r in c_api.search("IBU", after=page["next"], limit=3)]
    statut, tout = service.json("GET", "/v1/products?q=IBU&limit=200")
    assert tout["next"] is None and len(tout["products"]) < 200
    # Accents are code page 1252 inside, UTF-8 outside.
    statut, page = service.json("GET", "/v1/products?q=" + urllib.parse.quote("HÉ"))
    assert statut == 200 and [p["code"] for p in page["products"]] == [r.code for r in c_api.search("HÉ")]


ORDONNANCES = [
    ({"products": ["3026454", "3368195"], "patient": {"ageMonths": 900, "sex": "F", "pathologies": [{"type": "cim10", "code": "K26"}]}},
     ["--age", "900", "--sex", "F", "--pathology", "cim10:K26"]),
    ({"products": ["3026454", "9999999", "3267100"]}, []),
    ({"products": ["3436258"], "patient": {"sex": "F", "pregnancyWeeks": 30, "breastfeeding": True, "weightKg": 60}},
     ["--sex", "F", "--pregnancy", "30", "--breastfeeding", "--weight", "60"]),
    ({"products": ["3491317", "3368195", "3659573"],
      "patient": {"allergies": [{"type": "allergen", "code": "30501"}, {"type": "term", "code": "0000000103"}]}, "level": 3},
     ["--allergy", "allergen:30501", "--allergy", "term:0000000103", "--level", "3"]),
]


@pytest.mark.parametrize("corps,options", ORDONNANCES)
def test_the_check_is_vdx_checks(service, corps, options):
    statut, reponse = service.json("POST", "/v1/check", corps)
    assert statut == 200
    assert reponse == json.loads(vdx("check", "--base", BASE, "--json", *options, *corps["products"]))


def test_a_level_given_once_stays_with_its_request(service):
    complet = service.json("POST", "/v1/check", {"products": ["3026454", "3368195"]})[1]
    for _ in range(4):  # every worker has seen a level of 4 by now
        assert service.json("POST", "/v1/check", {"products": ["3026454", "3368195"], "level": 4})[0] == 200
    assert service.json("POST", "/v1/check", {"products": ["3026454", "3368195"]})[1] == complet
    assert any(r["level"] == 2 for r in complet["interactions"])


def test_the_reports_are_the_librarys_pages(service, tmp_path):
    corps = {"products": ["3026454", "3368195", "3659573"], "patient": {"allergies": [{"type": "allergen", "code": "30501"}]}}
    statut, pages = service.json("POST", "/v1/check/report", corps)
    assert statut == 200
    vdx("check", "--base", BASE, "--allergy", "allergen:30501", "--html", str(tmp_path), *corps["products"])
    for nom, fichier in [("interactions", "interactions.html"), ("contraindications", "contre-indications.html"),
                         ("allergies", "allergies.html"), ("duplicates", "doublons.html")]:
        assert pages[nom] == (tmp_path / fichier).read_bytes().decode("cp1252")
    assert "Association d&eacute;conseill&eacute;e" in pages["interactions"]


def test_the_base(service):
    statut, base = service.json("GET", "/v1/base")
    version = rangs(vdx("call", "--base", BASE, "Version_Vdx"))[0]
    assert statut == 200 and [base["version"], base["date"]] == version
    assert "VDXPRO" in base["tables"] and "VDXZICOU" in base["tables"] and "VDXZONCO" not in base["tables"]


LONG = "A" * 101
MAUVAISES = [
    ("POST", "/v1/check", "{", 400, "body"),
    ("POST", "/v1/check", "[]", 400, "body"),
    ("POST", "/v1/check", {"products": ["3026454"], "dose": 1}, 400, "dose"),
    ("POST", "/v1/check", {}, 400, "products"),
    ("POST", "/v1/check", {"products": []}, 400, "products"),
    ("POST", "/v1/check", {"products": "3026454"}, 400, "products"),
    ("POST", "/v1/check", {"products": ["3026454", "302645"]}, 400, "products[1]"),
    ("POST", "/v1/check", {"products": ["30264540"]}, 400, "products[0]"),
    ("POST", "/v1/check", {"products": ["3400930264546"]}, 400, "products[0]"),
    ("POST", "/v1/check", {"products": ["302645a"]}, 400, "products[0]"),
    ("POST", "/v1/check", {"products": [3026454]}, 400, "products[0]"),
    ("POST", "/v1/check", {"products": ["3026454"] * 201}, 400, "products"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"age": 3}}, 400, "patient.age"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"ageMonths": 30.5}}, 400, "patient.ageMonths"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"ageMonths": -1}}, 400, "patient.ageMonths"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"ageMonths": 2**40}}, 400, "patient.ageMonths"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"sex": "X"}}, 400, "patient.sex"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"breastfeeding": 1}}, 400, "patient.breastfeeding"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": []}, 400, "patient"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"pathologies": [{"type": "icd", "code": "K26"}]}}, 400,
     "patient.pathologies[0].type"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"pathologies": [{"type": "cim10", "code": LONG}]}}, 400,
     "patient.pathologies[0].code"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"pathologies": [{"type": "cim10", "code": "../x"}]}}, 400,
     "patient.pathologies[0].code"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"pathologies": [{"type": "cim10"}]}}, 400,
     "patient.pathologies[0].code"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"allergies": [{"type": "allergen", "code": "x1"}]}}, 400,
     "patient.allergies[0].code"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"allergies": [{"type": "allergen", "code": "0"}]}}, 400,
     "patient.allergies[0].code"),
    ("POST", "/v1/check", {"products": ["3026454"], "patient": {"allergies": [{"type": "term", "code": "1", "x": 1}]}}, 400,
     "patient.allergies[0].x"),
    ("POST", "/v1/check", {"products": ["3026454"], "level": 5}, 400, "level"),
    ("POST", "/v1/check", {"products": ["3026454"], "level": 0}, 400, "level"),
    ("POST", "/v1/check", {"products": ["3026454"], "level": 2**64}, 400, "level"),
    ("POST", "/v1/check", {"products": ["3026454"], "": 1}, 400, '""'),
    ("POST", "/v1/check/report", {"products": ["30"]}, 400, "products[0]"),
    ("POST", "/v1/check", "x" * (1024 * 1024 + 1), 413, "body"),
    ("GET", "/v1/products/302645", None, 400, "code"),
    ("GET", "/v1/products/3400930264546", None, 400, "code"),
    ("GET", "/v1/products/..%2FVDXPRO", None, 404, "request"),
    ("GET", "/v1/products/9999999", None, 404, "code"),
    ("GET", "/v1/products", None, 400, "q"),
    ("GET", "/v1/products?q=", None, 400, "q"),
    ("GET", "/v1/products?q=" + LONG, None, 400, "q"),
    ("GET", "/v1/products?q=IBU&after=" + LONG, None, 400, "after"),
    ("GET", "/v1/products?q=%F0%9F%92%8A", None, 400, "q"),
    ("GET", "/v1/products?q=%01", None, 400, "q"),
    ("GET", "/v1/products?q=IBU&limit=0", None, 400, "limit"),
    ("GET", "/v1/products?q=IBU&limit=201", None, 400, "limit"),
    ("GET", "/v1/products?q=IBU&limit=2x", None, 400, "limit"),
    ("GET", "/v1/products?q=IBU&q=DOLI", None, 400, "q"),
    ("GET", "/v1/products?q=IBU&base=/tmp", None, 400, "base"),
    ("GET", "/v1/nothing", None, 404, "request"),
]


@pytest.mark.parametrize("methode,chemin,corps,statut,champ", MAUVAISES)
def test_a_bad_request_is_refused_naming_its_field(service, methode, chemin, corps, statut, champ):
    obtenu, reponse = service.json(methode, chemin, corps)
    assert (obtenu, reponse["field"]) == (statut, champ), reponse


def test_a_failure_of_the_library_is_a_500_with_its_code_and_the_worker_lives_on(tmp_path):
    base = tmp_path / "base"
    shutil.copytree(BASE, base)
    with open(base / "VDXZICOU.DAT", "r+b") as f:
        f.truncate(8192)
    s = Service(str(base), "--workers", "1")
    try:
        travailleur = s.attend_travailleurs(1)
        statut, reponse = s.json("POST", "/v1/check", {"products": ["3026454", "3368195"]})
        assert (statut, reponse["function"], reponse["code"]) == (500, "Interactions2_Vdx", -500)
        assert "VDXZICOU.DAT" in reponse["error"]
        assert s.json("GET", "/v1/products/3026454")[0] == 200
        assert s.travailleurs() == travailleur
    finally:
        s.arrete()


def test_a_missing_base_stops_the_service():
    r = subprocess.run([VDX, "serve", "--base", "/nonexistent", "--listen", "127.0.0.1:0"], capture_output=True, timeout=20)
    assert r.returncode == 1 and b"Connection2_Vdx returned -6" in r.stderr


def test_it_listens_on_loopback_unless_told():
    r = subprocess.Popen([VDX, "serve", "--base", BASE], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    try:
        ligne = r.stdout.readline().decode()
        # 8080 may be taken on this machine: either way the address is loopback's.
        assert "http://127.0.0.1:8080/" in ligne or b"cannot listen on 127.0.0.1:8080" in r.stderr.read()
    finally:
        r.terminate()
        r.wait(timeout=10)


def attend_fermeture(prise, delai):
    prise.settimeout(delai)
    try:
        return prise.recv(100)
    except ConnectionResetError as e:
        return e
    except socket.timeout:
        return "still open"


def test_a_worker_killed_during_a_request_is_replaced(service):
    avant = service.attend_travailleurs(2)
    # A request half sent holds the worker that took it.
    prise = socket.create_connection(("127.0.0.1", service.port))
    prise.sendall(b"POST /v1/check HTTP/1.1\r\nHost: x\r\nContent-Length: 100\r\n\r\n{\"products\":")
    time.sleep(0.2)
    for p in avant:
        os.kill(p, signal.SIGKILL)
    fin = attend_fermeture(prise, 3)
    assert fin == b"" or isinstance(fin, ConnectionResetError), fin
    prise.close()
    apres = service.attend_travailleurs(2, sauf=avant)
    assert not set(apres) & set(avant)
    assert service.json("POST", "/v1/check", {"products": ["3026454", "3368195"]})[0] == 200


def test_a_request_that_stalls_is_dropped_and_others_are_served(service):
    prise = socket.create_connection(("127.0.0.1", service.port))
    prise.sendall(b"POST /v1/check HTTP/1.1\r\nHost: x\r\n")
    debut = time.monotonic()
    assert service.json("GET", "/v1/products/3026454")[0] == 200  # the other worker
    reponse = attend_fermeture(prise, 5)
    prise.close()
    assert time.monotonic() - debut < 4, "the stalled request was held beyond its timeout"
    assert reponse == b"" or isinstance(reponse, ConnectionResetError) or reponse.startswith(b"HTTP/1.1 4"), reponse


def test_the_page_checks_a_prescription_in_chromium(service, tmp_path):
    adresse = f"http://127.0.0.1:{service.port}/?products=3026454,3368195&age=70&sex=F"
    r = subprocess.run(["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--enable-logging=stderr", "--v=0",
                        "--virtual-time-budget=5000", f"--user-data-dir={tmp_path}", "--dump-dom", adresse],
                       capture_output=True, timeout=60)
    dom, console = r.stdout.decode(), r.stderr.decode()
    assert "Association déconseillée" in dom
    assert "COUMADINE 2MG CPR SEC B/20 + IBUPROFENE EG 400MG CPR PELL B/30" in dom
    assert dom.count("<iframe") == 4  # the library's four reports
    assert not [l for l in console.splitlines() if "CONSOLE" in l], console
    image = tmp_path / "page.png"
    subprocess.run(["chromium", "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={tmp_path}",
                    "--virtual-time-budget=5000", f"--screenshot={image}", "--window-size=900,1400", adresse],
                   capture_output=True, timeout=60)
    assert image.stat().st_size > 10000
