"""The Python package on the sample base: its answers against the same calls
through `vdx` (the check against `vdx check --json`, the product and the
search against `vdx call`), paging, and its errors. VDX32_LIBRARY names the
library, VDX_BASE the sample base, VDX_PROGRAMME the vdx program."""
import json
import os
import subprocess

import pytest

import vdx32

BASE = os.environ["VDX_BASE"]
VDX = os.environ["VDX_PROGRAMME"]


def vdx(*arguments):
    return subprocess.run([VDX, *arguments], check=True, capture_output=True).stdout.decode("utf-8")


def rangs(sortie):
    """The rows `vdx call` prints after its count, fields by tabs."""
    return [ligne.split("\t") for ligne in sortie.splitlines()[1:]]


@pytest.fixture
def base():
    with vdx32.Base(BASE) as b:
        yield b


# Warfarin with ibuprofen for a pregnant woman of 30 with an ulcer; the same
# with an unknown code and a product given on the skin; a product alone;
# amoxicillin for a patient allergic to penicillins, with two ibuprofens.
ORDONNANCES = [
    (["3026454", "3368195"], vdx32.Patient(age_months=360, sex="F", pregnancy_weeks=30, pathologies=[("cim10", "K26")]),
     ["--age-years", "30", "--sex", "F", "--pregnancy", "30", "--pathology", "cim10:K26"]),
    (["3026454", "9999999", "3267100"], vdx32.Patient(), []),
    (["3595583"], vdx32.Patient(weight_kg=45, breastfeeding=True), ["--weight", "45", "--breastfeeding"]),
    (["3491317", "3368195", "3659573"], vdx32.Patient(allergies=[("allergen", 30501), ("term", "0000000103")]),
     ["--allergy", "allergen:30501", "--allergy", "term:0000000103"]),
    (["8140313", "8387737", "3659573"], vdx32.Patient(sex="F", pregnancy_weeks=30), ["--sex", "F", "--pregnancy", "30"]),
]


@pytest.mark.parametrize("produits,patient,options", ORDONNANCES)
def test_the_check_is_vdx_checks(base, produits, patient, options):
    attendu = json.loads(vdx("check", "--base", BASE, "--json", *options, *produits))
    assert base.check(produits, patient=patient).to_json() == attendu


def test_the_check_finds_what_a_prescriber_expects(base):
    resultat = base.check(["3026454", "3368195"])
    assert [r.severity for r in resultat.interactions][0].startswith("Association d")
    assert {resultat.interactions[0].code1, resultat.interactions[0].code2} == {"3026454", "3368195"}
    assert not resultat.no_couples and not resultat.no_terms
    resultat = base.check(["3491317", "3368195", "3659573"], patient=vdx32.Patient(allergies=[("allergen", 30501)]))
    assert [(a.code, a.through) for a in resultat.allergies] == [("3491317", "allergen")]
    assert [(d.code1, d.code2, d.type) for d in resultat.duplicates] == [("3368195", "3659573", "substance")]


def test_a_product_and_the_search_as_the_c_api_gives_them(base):
    produit = base.product("3595583")
    assert produit.label == rangs(vdx("call", "--base", BASE, "LibelleProduit_Vdx", "3595583"))[0][0]
    assert produit.cis == rangs(vdx("call", "--base", BASE, "CIP_To_CIS_Vdx", "3595583"))[0][0]
    assert produit.deleted_on == ""
    page = base.search("IBU", limit=5)
    assert [(r.code, r.label) for r in page] == [tuple(r[:2]) for r in
                                                 rangs(vdx("call", "--base", BASE, "RechercheProduitParPas_Vdx", "IBU", "0", "", "5"))]
    suite = base.search("IBU", after=page[-1].label, limit=5)
    assert suite and suite[0].label > page[-1].label


def test_errors_carry_the_code_and_the_librarys_text(base):
    with pytest.raises(vdx32.VdxError) as e:
        base.product("123")
    assert e.value.code == -13 and e.value.function == "LibelleProduit_Vdx"
    with pytest.raises(RuntimeError):
        with vdx32.Base(BASE):
            pass


def test_a_missing_base_is_refused():
    with pytest.raises(vdx32.VdxError) as e:
        with vdx32.Base(os.path.join(BASE, "absente")):
            pass
    assert e.value.code == -6
