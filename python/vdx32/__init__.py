"""The VDX32 medicine-information library from Python, through ctypes.

    with vdx32.Base("build/sample-base") as base:
        base.product("3595583").label
        base.search("DOLI", limit=5)
        base.check(["3026454", "3368195"], patient=vdx32.Patient(age_months=360, sex="F"))

The library is libvdx32.so (VDX32.dll on Windows): the path given to Base,
else the environment's VDX32_LIBRARY, else the system's search. It serves
one thread of one process, so one Base is open at a time. Texts are the
library's code page 1252, given here as str. A failure raises VdxError with
the export's name, its return code and the library's text of the error.
"""
from __future__ import annotations

import ctypes
import ctypes.util
import os
import sys
from dataclasses import dataclass, field
from typing import List, Optional, Sequence, Tuple, Union

__all__ = ["Base", "Patient", "Product", "SearchRow", "Interaction", "ContraIndication", "Allergy", "Duplicate",
           "CheckResult", "VdxError"]

_CODAGE = "cp1252"
_SLOT = ctypes.sizeof(ctypes.c_void_p)  # one field of a record
_BSTR = ctypes.c_void_p
_VT_I4, _VT_BSTR = 3, 8
_SANS_SECOND_PRODUIT = "0000000"  # the second side of a row about what is taken outside the prescription
_TYPES_PATHOLOGIE = {"term": 1, "cisp": 2, "cim10": 3}


class VdxError(Exception):
    """A negative return of an export, with the library's text of the error."""

    def __init__(self, function: str, code: int, text: str):
        super().__init__(f"{function}: {code} ({text})")
        self.function, self.code, self.text = function, code, text


@dataclass
class Patient:
    """Age in months, weight in kg, weeks of pregnancy, breast-feeding, sex
    "M" or "F" (empty when unknown), pathologies as (kind, code) with kind
    "term", "cisp" or "cim10", and allergies as ("term", code) for an
    allergy term or ("allergen", number) for a substance or, above 30000, a
    chemical family."""

    age_months: int = 0
    weight_kg: int = 0
    pregnancy_weeks: int = 0
    breastfeeding: bool = False
    sex: str = ""
    pathologies: Sequence[Tuple[str, str]] = ()
    allergies: Sequence[Tuple[str, Union[str, int]]] = ()


@dataclass
class Product:
    code: str
    label: str
    cis: str
    cip13: str
    deleted_on: str  # JJ/MM/AAAA, empty when the product is not deleted


@dataclass
class SearchRow:
    code: str
    label: str


@dataclass
class Interaction:
    level: int
    severity: str
    code1: str
    label1: str
    code2: str
    label2: str
    kind: str
    risk: str
    conduct: str
    condition: str
    reference: str


@dataclass
class ContraIndication:
    level: int
    code: str
    label: str
    term: str
    term_label: str
    patient_code: str


@dataclass
class Allergy:
    through: str  # "term" or "allergen"
    code: str
    label: str
    cause: str
    cause_text: str


@dataclass
class Duplicate:
    type: str  # "substance", "synonym" or "class"
    code1: str
    label1: str
    code2: str
    label2: str
    substance: str
    substance1: str
    substance2: str
    class_code: str
    class_label: str


@dataclass
class CheckResult:
    """What `vdx check --json` gives: the prescription, the interactions
    between its products and with what is taken outside it, the products
    left out of the analysis (local routes only), the contra-indications and
    precautions, the allergies, the substances given twice, and whether the
    base has couples and terms at all."""

    prescription: List[SearchRow] = field(default_factory=list)
    interactions: List[Interaction] = field(default_factory=list)
    outside: List[Interaction] = field(default_factory=list)
    not_analysed: List[SearchRow] = field(default_factory=list)
    contraindications: List[ContraIndication] = field(default_factory=list)
    allergies: List[Allergy] = field(default_factory=list)
    duplicates: List[Duplicate] = field(default_factory=list)
    no_couples: bool = False
    no_terms: bool = False

    def to_json(self) -> dict:
        """The object `vdx check --json` prints."""

        def interactions(lignes):
            return [{"level": r.level, "severity": r.severity, "code1": r.code1, "label1": r.label1, "code2": r.code2,
                     "label2": r.label2, "kind": r.kind, "risk": r.risk, "conduct": r.conduct, "condition": r.condition,
                     "reference": r.reference} for r in lignes]

        return {
            "prescription": [{"code": p.code, "label": p.label} for p in self.prescription],
            "interactions": interactions(self.interactions),
            "noCouples": self.no_couples,
            "noTerms": self.no_terms,
            "notAnalysed": [{"code": p.code, "label": p.label, "reason": "local route only"} for p in self.not_analysed],
            "outside": interactions(self.outside),
            "contraindications": [{"level": a.level, "code": a.code, "label": a.label, "term": a.term,
                                   "termLabel": a.term_label, "patientCode": a.patient_code}
                                  for a in self.contraindications],
            "allergies": [{"through": a.through, "code": a.code, "label": a.label, "cause": a.cause,
                           "causeText": a.cause_text} for a in self.allergies],
            "duplicates": [{"type": d.type, "code1": d.code1, "label1": d.label1, "code2": d.code2, "label2": d.label2,
                            "substance": d.substance, "substance1": d.substance1, "substance2": d.substance2,
                            "class": d.class_code, "classLabel": d.class_label} for d in self.duplicates],
        }


# ---- The library's declarations, as include/vdx32/vdx32.h and oleauto.h ----

class _Borne(ctypes.Structure):
    _fields_ = [("cElements", ctypes.c_uint32), ("lLbound", ctypes.c_int32)]


class _Tableau(ctypes.Structure):
    _fields_ = [("cDims", ctypes.c_uint16), ("fFeatures", ctypes.c_uint16), ("cbElements", ctypes.c_uint32),
                ("cLocks", ctypes.c_uint32), ("pvData", ctypes.c_void_p), ("rgsabound", _Borne * 1)]


_PTableau = ctypes.POINTER(_Tableau)
_FONCTION = ctypes.WINFUNCTYPE if sys.platform == "win32" else ctypes.CFUNCTYPE
_BoiteMessage = _FONCTION(ctypes.c_int32, ctypes.c_void_p, ctypes.c_char_p, ctypes.c_char_p, ctypes.c_int32)

_I, _S = "i", "s"  # the kinds of a record's fields
_CHAMPS_INTERACTION = [_S] * 7 + [_I] + [_S] * 8 + [_I] * 5 + [_S] * 2  # VdxInteraction2
_CHAMPS_ALERTE = [_I, _I, _S, _S, _S, _S, _S]  # VdxAlerteCI
_CHAMPS_ALLERGIE = [_I] + [_S] * 4  # VdxFicheAllergie
_CHAMPS_DOUBLON = [_S] * 12 + [_I]  # VdxFicheSurdosage
_REDONDANCES = {2: "synonym", 3: "substance", 4: "class"}


def _charge(chemin: Optional[str]):
    chemin = chemin or os.environ.get("VDX32_LIBRARY")
    if os.name == "nt":
        vdx = ctypes.WinDLL(chemin or "VDX32.dll")
        ole = ctypes.windll.oleaut32
    else:
        chemin = chemin or ctypes.util.find_library("vdx32")
        if not chemin:
            raise OSError("libvdx32.so not found: give its path to Base or set VDX32_LIBRARY")
        vdx = ctypes.CDLL(chemin)
        ole = vdx
    i32, ppt, cp = ctypes.c_int32, ctypes.POINTER(_PTableau), ctypes.c_char_p
    for bibliotheque, nom, resultat, arguments in [
        (vdx, "Connection2_Vdx", i32, [cp, i32, i32]),
        (vdx, "DeConnection2_Vdx", None, []),
        (vdx, "GetLastError_Vdx", cp, [cp]),
        (vdx, "InstalleNotifications_Vdx", i32, [_BoiteMessage, ctypes.c_void_p, ctypes.c_void_p]),
        (vdx, "NiveauInteraction_Vdx", i32, [i32]),
        (vdx, "TablePresente_Vdx", i32, [cp]),
        (vdx, "LibelleProduit_Vdx", i32, [cp, ctypes.POINTER(_BSTR)]),
        (vdx, "IsMedDC_Vdx", i32, [cp]),
        (vdx, "LibelleMedDC2_Vdx", i32, [cp, ctypes.POINTER(_BSTR)]),
        (vdx, "CIP_To_CIS_Vdx", i32, [cp, ctypes.POINTER(_BSTR)]),
        (vdx, "CIP_CIP13_Vdx", i32, [cp, ctypes.POINTER(_BSTR)]),
        (vdx, "ProduitSupprime_Vdx", i32, [cp, ctypes.POINTER(_BSTR)]),
        (vdx, "RechercheProduitParPas_Vdx", i32, [cp, ppt, i32, cp, i32]),
        (vdx, "ListeVoie_Vdx", i32, [cp, ppt]),
        (vdx, "Interactions2_Vdx", i32, [ppt, ppt, ppt, ppt, i32, i32, i32, i32, cp]),
        (vdx, "ContreIndicationsProfil2_Vdx", i32, [ppt, ppt, ppt, ppt, ppt, i32, i32, i32, i32, cp]),
        (vdx, "ControleAllergies_Vdx", i32, [ppt, ppt, ppt, ppt]),
        (vdx, "Surdosage_Vdx", i32, [ppt, ppt]),
        (ole, "SysAllocStringByteLen", _BSTR, [cp, ctypes.c_uint]),
        (ole, "SysFreeString", None, [_BSTR]),
        (ole, "SysStringByteLen", ctypes.c_uint, [_BSTR]),
        (ole, "SafeArrayCreateVector", _PTableau, [ctypes.c_uint16, ctypes.c_int32, ctypes.c_uint32]),
        (ole, "SafeArrayAllocDescriptor", i32, [ctypes.c_uint, ppt]),
        (ole, "SafeArrayAllocData", i32, [_PTableau]),
        (ole, "SafeArrayDestroy", i32, [_PTableau]),
    ]:
        fonction = getattr(bibliotheque, nom)
        fonction.restype, fonction.argtypes = resultat, arguments
    return vdx, ole


class Base:
    """A connection to the base of a directory, in the output mode of arrays.
    Message boxes the library would show are kept in `messages` as
    (text, title)."""

    _ouverte = False

    def __init__(self, path: str, library: Optional[str] = None):
        self._vdx, self._ole = _charge(library)
        self.path = path
        self.messages: List[Tuple[str, str]] = []

    def __enter__(self) -> "Base":
        if Base._ouverte:
            raise RuntimeError("one Base is open at a time: the library serves one session a process")

        def boite(_contexte, texte, titre, _style):
            self.messages.append(((texte or b"").decode(_CODAGE), (titre or b"").decode(_CODAGE)))
            return 1

        self._boite = _BoiteMessage(boite)  # kept alive while installed
        self._vdx.InstalleNotifications_Vdx(self._boite, None, None)
        chemin = self.path.encode(_CODAGE) if os.name == "nt" else os.fsencode(self.path)
        self._verifie("Connection2_Vdx", self._vdx.Connection2_Vdx(chemin, 0, 0))
        Base._ouverte = True
        return self

    def __exit__(self, *exc) -> None:
        self._vdx.DeConnection2_Vdx()
        # The library's own boxes again: this handler goes with the Base.
        self._vdx.InstalleNotifications_Vdx(_BoiteMessage(), None, None)
        Base._ouverte = False

    # ---- Questions ----

    def product(self, code: str) -> Product:
        c = code.encode(_CODAGE)
        libelle = self._chaine("LibelleProduit_Vdx", self._vdx.LibelleProduit_Vdx, c)
        cis = self._chaine("CIP_To_CIS_Vdx", self._vdx.CIP_To_CIS_Vdx, c, absent=True)
        cip13 = self._chaine("CIP_CIP13_Vdx", self._vdx.CIP_CIP13_Vdx, c, absent=True)
        supprime = self._chaine("ProduitSupprime_Vdx", self._vdx.ProduitSupprime_Vdx, c, absent=True)
        return Product(code, libelle, cis, cip13, supprime)

    def search(self, text: str, after: Optional[str] = None, limit: int = 20) -> List[SearchRow]:
        """The products whose label begins with `text`, a page of `limit`
        from the one after the label `after`."""
        tableau = self._tableau_de_fiches(3)
        try:
            self._verifie("RechercheProduitParPas_Vdx", self._vdx.RechercheProduitParPas_Vdx(
                text.encode(_CODAGE), ctypes.byref(tableau), 0, (after or "").encode(_CODAGE), limit))
            return [SearchRow(f[0], f[1]) for f in self._fiches(tableau, [_S, _S, _S])]
        finally:
            self._ole.SafeArrayDestroy(tableau)

    def check(self, products: Sequence[str], patient: Optional[Patient] = None,
              level: Optional[int] = None) -> CheckResult:
        """The check of a prescription for a patient, as `vdx check`: `level`
        the lowest interaction level shown."""
        patient = patient or Patient()
        types = [_TYPES_PATHOLOGIE[k] if isinstance(k, str) else int(k) for k, _ in patient.pathologies]
        codes = [c for _, c in patient.pathologies]
        termes = [str(c) for k, c in patient.allergies if k == "term"]
        allergenes = [int(c) for k, c in patient.allergies if k == "allergen"]
        if len(termes) + len(allergenes) != len(patient.allergies):
            raise ValueError("an allergy is (\"term\", code) or (\"allergen\", number)")
        entrees = [self._tableau_de_chaines(products), self._tableau_de_chaines(codes), self._tableau_d_entiers(types),
                   self._tableau_d_entiers(list(range(1, len(codes) + 1))), self._tableau_de_chaines(termes),
                   self._tableau_d_entiers(allergenes)]
        produits, codes_patient, types_patient, valeurs, termes_allergie, allergenes_patient = entrees
        sorties = [self._tableau_de_fiches(len(c)) for c in
                   (_CHAMPS_INTERACTION, _CHAMPS_ALERTE, _CHAMPS_ALLERGIE, _CHAMPS_DOUBLON)]
        lignes, alertes, allergies, doublons = sorties
        profil = (patient.age_months, patient.weight_kg, patient.pregnancy_weeks, int(patient.breastfeeding),
                  patient.sex.encode(_CODAGE))
        avant = self._vdx.NiveauInteraction_Vdx(-1)
        try:
            if level is not None:
                self._vdx.NiveauInteraction_Vdx(level)
            self._verifie("Interactions2_Vdx", self._vdx.Interactions2_Vdx(
                ctypes.byref(produits), ctypes.byref(codes_patient), ctypes.byref(types_patient), ctypes.byref(lignes),
                *profil))
            self._verifie("ContreIndicationsProfil2_Vdx", self._vdx.ContreIndicationsProfil2_Vdx(
                ctypes.byref(codes_patient), ctypes.byref(types_patient), ctypes.byref(valeurs), ctypes.byref(produits),
                ctypes.byref(alertes), *profil))
            if patient.allergies:
                self._verifie("ControleAllergies_Vdx", self._vdx.ControleAllergies_Vdx(
                    ctypes.byref(termes_allergie), ctypes.byref(allergenes_patient), ctypes.byref(produits),
                    ctypes.byref(allergies)))
            self._verifie("Surdosage_Vdx", self._vdx.Surdosage_Vdx(ctypes.byref(produits), ctypes.byref(doublons)))
            rangs = [Interaction(f[7], f[4], f[0], f[2], f[1], f[3], f[5], f[9], f[11], f[22], f[6])
                     for f in self._fiches(lignes, _CHAMPS_INTERACTION)]
            resultat = CheckResult(
                contraindications=[ContraIndication(f[0], f[2], f[3], f[4], f[5], f[6])
                                   for f in self._fiches(alertes, _CHAMPS_ALERTE)],
                allergies=[Allergy("term" if f[0] == 1 else "allergen", *f[1:])
                           for f in self._fiches(allergies, _CHAMPS_ALLERGIE)],
                duplicates=[Duplicate(_REDONDANCES.get(f[12], "class"), f[0], f[2], f[1], f[3], f[9], f[6], f[7], f[10],
                                      f[11]) for f in self._fiches(doublons, _CHAMPS_DOUBLON)])
        finally:
            self._vdx.NiveauInteraction_Vdx(avant)
            for t in entrees + sorties:
                self._ole.SafeArrayDestroy(t)
        for code in products:
            # A line by common name has a title rather than a product's label.
            nom = "LibelleMedDC2_Vdx" if self._vdx.IsMedDC_Vdx(code.encode(_CODAGE)) == 1 else "LibelleProduit_Vdx"
            try:
                libelle = self._chaine(nom, getattr(self._vdx, nom), code.encode(_CODAGE))
            except VdxError:
                libelle = "(produit inconnu)"
            produit = SearchRow(code, libelle)
            resultat.prescription.append(produit)
            if self._voies_locales(code) and not any(code in (r.code1, r.code2) for r in rangs):
                resultat.not_analysed.append(produit)
        for r in rangs:
            (resultat.outside if r.code2 == _SANS_SECOND_PRODUIT else resultat.interactions).append(r)
        resultat.no_couples = self._presente("VDXZICOU") == 0
        resultat.no_terms = self._presente("VDXVAMM") == 0
        return resultat

    # ---- The library's values ----

    def _verifie(self, fonction: str, code: int) -> int:
        if code < 0:
            tampon = ctypes.create_string_buffer(300)
            texte = (self._vdx.GetLastError_Vdx(tampon) or b"").decode(_CODAGE)
            raise VdxError(fonction, code, texte)
        return code

    def _presente(self, table: str) -> int:
        return self._verifie("TablePresente_Vdx", self._vdx.TablePresente_Vdx(table.encode(_CODAGE)))

    def _texte(self, bstr) -> str:
        return ctypes.string_at(bstr, self._ole.SysStringByteLen(bstr)).decode(_CODAGE) if bstr else ""

    def _chaine(self, nom: str, fonction, code: bytes, absent: bool = False) -> str:
        """The string an export gives; with `absent`, empty for a fact the
        product lacks (0 or -90)."""
        chaine = _BSTR()
        try:
            n = fonction(code, ctypes.byref(chaine))
            if absent and n in (0, -90):
                return ""
            self._verifie(nom, n)
            return self._texte(chaine.value)
        finally:
            self._ole.SysFreeString(chaine.value)

    def _voies_locales(self, code: str) -> bool:
        """Whether every route of the product reaches no further than where
        it is laid (route codes beginning with "B")."""
        tableau = self._tableau_de_fiches(2)
        try:
            if self._vdx.ListeVoie_Vdx(code.encode(_CODAGE), ctypes.byref(tableau)) <= 0:
                return False
            return all(f[0].startswith("B") for f in self._fiches(tableau, [_S, _S]))
        finally:
            self._ole.SafeArrayDestroy(tableau)

    # ---- Host arrays ----

    def _tableau_de_fiches(self, champs: int):
        """An empty array of records of `champs` fields, as a host makes it."""
        tableau = _PTableau()
        if self._ole.SafeArrayAllocDescriptor(1, ctypes.byref(tableau)) != 0:
            raise MemoryError("SafeArrayAllocDescriptor")
        tableau.contents.cbElements = champs * _SLOT
        if self._ole.SafeArrayAllocData(tableau) != 0:
            raise MemoryError("SafeArrayAllocData")
        return tableau

    def _tableau_de_chaines(self, textes: Sequence[str]):
        tableau = self._ole.SafeArrayCreateVector(_VT_BSTR, 0, len(textes))
        elements = (_BSTR * len(textes)).from_address(tableau.contents.pvData) if textes else []
        for i, t in enumerate(textes):
            octets = t.encode(_CODAGE)
            elements[i] = self._ole.SysAllocStringByteLen(octets, len(octets))  # freed with the array
        return tableau

    def _tableau_d_entiers(self, valeurs: Sequence[int]):
        tableau = self._ole.SafeArrayCreateVector(_VT_I4, 0, len(valeurs))
        if valeurs:
            (ctypes.c_int32 * len(valeurs)).from_address(tableau.contents.pvData)[:] = list(valeurs)
        return tableau

    def _fiches(self, tableau, genres: List[str]) -> List[list]:
        """The records of an array the library filled, their strings freed:
        an integer in the first four bytes of its slot, a string in its slot."""
        fiches = []
        t = tableau.contents
        for i in range(t.rgsabound[0].cElements):
            adresse = t.pvData + i * t.cbElements
            fiche = []
            for n, genre in enumerate(genres):
                case = adresse + n * _SLOT
                if genre == _I:
                    fiche.append(ctypes.c_int32.from_address(case).value)
                else:
                    bstr = _BSTR.from_address(case)
                    fiche.append(self._texte(bstr.value))
                    self._ole.SysFreeString(bstr.value)
                    bstr.value = None
            fiches.append(fiche)
        return fiches
