#!/usr/bin/env python3
"""A host of VDX32 written in Python with ctypes, run on the sample base.

    python3 hote.py [LIBRARY] BASE

LIBRARY is libvdx32.so (else $VDX32_LIBRARY; on Windows VDX32.dll by
default); BASE is the base directory. It installs a message-box handler,
connects, reads a product's label through a BSTR*, the long-term illnesses
as an array of records and as the flat text of memory mode, and in a wide
session; each result is checked against the sample base's sources
(data/sample). Exits 0 when every check passes, 1 at the first that fails.
"""
import ctypes
import os
import sys

# ---- Declarations, as in include/vdx32/vdx32.h and oleauto.h -------------

BSTR = ctypes.c_void_p  # points to the first character; length in front
SLOT = ctypes.sizeof(ctypes.c_void_p)  # one field of a record: 4 or 8 bytes


class SAFEARRAYBOUND(ctypes.Structure):
    _fields_ = [("cElements", ctypes.c_uint32), ("lLbound", ctypes.c_int32)]


class SAFEARRAY(ctypes.Structure):
    _fields_ = [
        ("cDims", ctypes.c_uint16),
        ("fFeatures", ctypes.c_uint16),
        ("cbElements", ctypes.c_uint32),
        ("cLocks", ctypes.c_uint32),
        ("pvData", ctypes.c_void_p),
        ("rgsabound", SAFEARRAYBOUND * 1),
    ]


# The callback types carry VDX_CALL, as the exports: stdcall on Windows
# (WINFUNCTYPE), the C convention elsewhere.
FONCTION = ctypes.WINFUNCTYPE if sys.platform == "win32" else ctypes.CFUNCTYPE
VdxBoiteMessage = FONCTION(ctypes.c_int32, ctypes.c_void_p, ctypes.c_char_p, ctypes.c_char_p, ctypes.c_int32)
VdxProgression = FONCTION(None, ctypes.c_void_p, ctypes.c_int32, ctypes.c_int32, ctypes.c_char_p)


def charge(chemin):
    """The library and the host-type functions: libvdx32 itself on Linux,
    the system's oleaut32 on Windows."""
    if os.name == "nt":
        vdx = ctypes.WinDLL(chemin or "VDX32.dll")  # exports are __stdcall
        ole = ctypes.windll.oleaut32
    else:
        vdx = ctypes.CDLL(chemin)
        ole = vdx
    i32, psa = ctypes.c_int32, ctypes.POINTER(SAFEARRAY)
    declarations = [
        (vdx, "Connection_Vdx", i32, [ctypes.c_char_p, i32, i32]),
        (vdx, "DeConnection2_Vdx", None, []),
        (vdx, "LibelleProduit_Vdx", i32, [ctypes.c_char_p, ctypes.POINTER(BSTR)]),
        (vdx, "ListeALD_Vdx", i32, [ctypes.POINTER(psa)]),
        (vdx, "GetLenString_Vdx", i32, []),
        (vdx, "GetString_Vdx", i32, [ctypes.c_char_p]),
        (vdx, "GetString2_Vdx", i32, [ctypes.c_char_p, i32, i32]),
        (vdx, "InstalleNotifications_Vdx", i32, [VdxBoiteMessage, VdxProgression, ctypes.c_void_p]),
        (vdx, "Rtf_To_Texte", i32, [ctypes.c_char_p, ctypes.POINTER(BSTR)]),
        (ole, "SysFreeString", None, [BSTR]),
        (ole, "SysStringByteLen", ctypes.c_uint, [BSTR]),
        (ole, "SafeArrayAllocDescriptor", i32, [ctypes.c_uint, ctypes.POINTER(psa)]),
        (ole, "SafeArrayAllocData", i32, [psa]),
        (ole, "SafeArrayGetUBound", i32, [psa, ctypes.c_uint, ctypes.POINTER(ctypes.c_int32)]),
        (ole, "SafeArrayAccessData", i32, [psa, ctypes.POINTER(ctypes.c_void_p)]),
        (ole, "SafeArrayUnaccessData", i32, [psa]),
        (ole, "SafeArrayDestroy", i32, [psa]),
    ]
    for bibliotheque, nom, resultat, arguments in declarations:
        fonction = getattr(bibliotheque, nom)
        fonction.restype, fonction.argtypes = resultat, arguments
    return vdx, ole


# ---- Host strings and arrays ----------------------------------------------


def octets(ole, bstr):
    """The bytes a BSTR holds (its length is in bytes)."""
    if not bstr:
        return b""
    return ctypes.string_at(bstr, ole.SysStringByteLen(bstr))


def tableau_de_fiches(ole, champs):
    """An empty array of records of `champs` fields, as the header says to make it."""
    tableau = ctypes.POINTER(SAFEARRAY)()
    verifie(ole.SafeArrayAllocDescriptor(1, ctypes.byref(tableau)) == 0, "SafeArrayAllocDescriptor failed")
    tableau.contents.cbElements = champs * SLOT
    tableau.contents.rgsabound[0].lLbound = 0
    tableau.contents.rgsabound[0].cElements = 0
    verifie(ole.SafeArrayAllocData(tableau) == 0, "SafeArrayAllocData failed")
    return tableau


def lit_code_libelle(ole, tableau, lignes):
    """The rows of an array of VdxCodeLibelle, field by field: the integer in
    the first 4 bytes of slot 0, the BSTR filling slot 1. Frees each BSTR."""
    haut = ctypes.c_int32()
    verifie(ole.SafeArrayGetUBound(tableau, 1, ctypes.byref(haut)) == 0 and haut.value == lignes - 1,
            f"the array's upper bound is {haut.value}, not {lignes - 1}")
    donnees = ctypes.c_void_p()
    verifie(ole.SafeArrayAccessData(tableau, ctypes.byref(donnees)) == 0, "SafeArrayAccessData failed")
    fiches = []
    for i in range(lignes):
        fiche = donnees.value + i * tableau.contents.cbElements
        code = ctypes.c_int32.from_address(fiche).value
        libelle = BSTR.from_address(fiche + SLOT).value
        fiches.append((code, octets(ole, libelle)))
        ole.SysFreeString(libelle)
    ole.SafeArrayUnaccessData(tableau)
    return fiches


# ---- Checks ---------------------------------------------------------------


class Echec(Exception):
    pass


def verifie(condition, message):
    if not condition:
        raise Echec(message)


def sources_de_l_exemple():
    """The long-term illnesses of the sample base, from its source VDXYALD:
    (code, label) in code order, the label as a str."""
    chemin = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "data", "sample", "VDXYALD.tsv")
    with open(chemin, encoding="utf-8", newline="") as f:
        lignes = f.read().split("\n")
    return [(int(code), libelle) for code, libelle in (l.split("\t") for l in lignes[1:] if l)]


PRODUIT, LIBELLE_PRODUIT = b"3026454", b"COUMADINE 2MG CPR SEC B/20"  # VDXPRO of the sample base
# The message box of an internal error, which Rtf_To_Texte gives for a null
# argument: text, title, style (48, exclamation).
BOITE_ERREUR_INTERNE = (
    b"Une erreur interne est survenue lors de l'appel de la fonction Rtf_To_Texte !",
    b"Erreur DLL",
    48,
)
CONTEXTE = 0x5D3  # handed back to the handler as given


def main(argv):
    if len(argv) == 2:
        bibliotheque, base = os.environ.get("VDX32_LIBRARY"), argv[1]
    elif len(argv) == 3:
        bibliotheque, base = argv[1], argv[2]
    else:
        print(f"usage: {argv[0]} [LIBRARY] BASE", file=sys.stderr)
        return 2
    if not bibliotheque and os.name != "nt":
        print("the library: give its path or set VDX32_LIBRARY", file=sys.stderr)
        return 2
    vdx, ole = charge(bibliotheque)
    chemin = base.encode("cp1252") if os.name == "nt" else os.fsencode(base)
    ald = sources_de_l_exemple()
    ald_8bits = [(code, libelle.encode("cp1252")) for code, libelle in ald]

    # The message-box handler, installed before connecting; Rtf_To_Texte
    # with null arguments shows a message box without a connection.
    boites = []

    def boite(contexte, texte, titre, style):
        boites.append((contexte, texte, titre, style))
        return 1

    gestionnaire = VdxBoiteMessage(boite)  # kept alive while installed
    verifie(vdx.InstalleNotifications_Vdx(gestionnaire, VdxProgression(), CONTEXTE) == 1,
            "InstalleNotifications_Vdx did not return 1")
    verifie(vdx.Rtf_To_Texte(None, None) == -2000, "Rtf_To_Texte(null, null) did not return -2000")
    verifie(len(boites) == 1, f"Rtf_To_Texte(null, null) gave {len(boites)} message boxes, not one")
    verifie(boites[0][0] == CONTEXTE, f"the handler got the context {boites[0][0]}, not {CONTEXTE}")
    verifie(boites[0][1:] == BOITE_ERREUR_INTERNE, f"the message box was {boites[0][1:]!r}")

    verifie(vdx.ListeALD_Vdx(None) == -2, "ListeALD_Vdx before the connection did not return -2")

    # Mode 0, 8-bit strings: a label through a BSTR*, then an array of records.
    verifie(vdx.Connection_Vdx(chemin, 0, 0) == 1, f"Connection_Vdx({base!r}, 0, 0) failed")
    libelle = BSTR()
    verifie(vdx.LibelleProduit_Vdx(PRODUIT, ctypes.byref(libelle)) == 1, "LibelleProduit_Vdx did not return 1")
    verifie(octets(ole, libelle) == LIBELLE_PRODUIT, f"LibelleProduit_Vdx gave {octets(ole, libelle)!r}")
    verifie(vdx.LibelleProduit_Vdx(b"9999999", ctypes.byref(libelle)) == -90,
            "LibelleProduit_Vdx of a code no product has did not return -90")
    verifie(octets(ole, libelle) == b"", "LibelleProduit_Vdx did not empty the string before failing")
    ole.SysFreeString(libelle)

    tableau = tableau_de_fiches(ole, 2)
    n = vdx.ListeALD_Vdx(ctypes.byref(tableau))
    verifie(n == len(ald), f"ListeALD_Vdx returned {n}, the sample base holds {len(ald)}")
    fiches = lit_code_libelle(ole, tableau, n)
    ole.SafeArrayDestroy(tableau)
    verifie(fiches == ald_8bits, f"ListeALD_Vdx in mode 0 gave {fiches[:2]!r}...")
    vdx.DeConnection2_Vdx()

    # Mode 2: the same rows as the flat text in memory.
    verifie(vdx.Connection_Vdx(chemin, 2, 0) == 1, "Connection_Vdx in mode 2 failed")
    n = vdx.ListeALD_Vdx(None)
    verifie(n == len(ald), f"ListeALD_Vdx in mode 2 returned {n}")
    taille = vdx.GetLenString_Vdx()
    tampon = ctypes.create_string_buffer(taille)
    verifie(vdx.GetString_Vdx(tampon) == 1, "GetString_Vdx did not return 1")
    texte = tampon.raw[: taille - 1]
    lignes = [ligne.split(b"@") for ligne in texte.split(b"\r\n")]
    verifie(lignes == [[b"%d" % code, libelle] for code, libelle in ald_8bits],
            f"the memory text is not the sample's rows: it begins {texte[:60]!r}")
    pages, page = [], ctypes.create_string_buffer(101)
    while vdx.GetString2_Vdx(page, len(pages) + 1, 101) == 1:
        pages.append(page.value)
    verifie(b"".join(pages) == texte and len(pages) == (len(texte) + 99) // 100,
            f"GetString2_Vdx gave {len(pages)} pages that are not the text")
    vdx.DeConnection2_Vdx()

    # Mode 0 with wide strings: the records' strings are UTF-16, single
    # texts still 8-bit.
    verifie(vdx.Connection_Vdx(chemin, 0, 1) == 1, "Connection_Vdx in mode 0, wide, failed")
    tableau = tableau_de_fiches(ole, 2)
    n = vdx.ListeALD_Vdx(ctypes.byref(tableau))
    verifie(n == len(ald), f"ListeALD_Vdx in a wide session returned {n}")
    fiches = [(code, libelle.decode("utf-16-le", "replace")) for code, libelle in lit_code_libelle(ole, tableau, n)]
    ole.SafeArrayDestroy(tableau)
    verifie(fiches == ald, f"ListeALD_Vdx in a wide session gave {fiches[:2]!r}...")
    libelle = BSTR()
    verifie(vdx.LibelleProduit_Vdx(PRODUIT, ctypes.byref(libelle)) == 1, "LibelleProduit_Vdx, wide, failed")
    verifie(octets(ole, libelle) == LIBELLE_PRODUIT, f"LibelleProduit_Vdx, wide, gave {octets(ole, libelle)!r}")
    ole.SysFreeString(libelle)
    vdx.DeConnection2_Vdx()

    # Removed, the handler is called no more: the message box goes to
    # standard error.
    boites.clear()
    verifie(vdx.InstalleNotifications_Vdx(VdxBoiteMessage(), VdxProgression(), None) == 1,
            "InstalleNotifications_Vdx(null) did not return 1")
    verifie(vdx.Rtf_To_Texte(None, None) == -2000, "Rtf_To_Texte(null, null) did not return -2000")
    verifie(boites == [], "the handler was called after its removal")
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv))
    except Echec as echec:
        print(f"{os.path.basename(sys.argv[0])}: {echec}", file=sys.stderr)
        sys.exit(1)
