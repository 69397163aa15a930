"""Checks of a page the library wrote, as headless Chromium showed it.

    pages.py PAGE DOM CONSOLE SCREENSHOT [TEXT...] [--ordre TEXT...]
    pages.py PAGE DOM CONSOLE SCREENSHOT --interactions ROWS

PAGE is the file as written, DOM the document Chromium dumped (UTF-8),
CONSOLE what it logged, SCREENSHOT its picture. Each TEXT must be in the
DOM; those after --ordre in the text the page shows, in their order. ROWS
is what `vdx call` printed of Interactions2_Vdx for the same prescription:
each row's detail must show its pair, severity, kind, risk and conduct, in
the rows' order. A return link to "#Sommaire" needs no anchor. Prints what
fails and exits 1.
"""
import html.parser
import re
import struct
import sys
import zlib

echecs = []


def verifie(condition, quoi):
    if not condition:
        echecs.append(quoi)


def pixels_varies(png):
    """Whether a PNG holds more than one colour: a blank page decompresses
    to a few repeated bytes whatever its filters."""
    donnees = open(png, 'rb').read()
    if not donnees.startswith(b'\x89PNG'):
        return False
    i, idat = 8, b''
    while i < len(donnees):
        longueur, = struct.unpack('>I', donnees[i:i + 4])
        genre = donnees[i + 4:i + 8]
        if genre == b'IDAT':
            idat += donnees[i + 8:i + 8 + longueur]
        i += 12 + longueur
    return len(set(zlib.decompress(idat))) > 8


class Texte(html.parser.HTMLParser):
    """The text a page shows, its blanks folded."""

    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.morceaux = []

    def handle_data(self, data):
        self.morceaux.append(data)

    def texte(self):
        return ' '.join(' '.join(self.morceaux).split())


def attendus_interactions(chemin):
    """The texts of each row's detail, in order; the page's table writes
    an upper-case È and Ü as their small letters."""
    lignes = open(chemin, encoding='utf-8').read().splitlines()[1:]
    attendus = []
    for rang, ligne in enumerate(lignes, 1):
        champs = ligne.split('\t')
        attendus.append('Interaction %d/%d' % (rang, len(lignes)))
        for n in (2, 3, 4, 5, 9, 11):
            texte = champs[n].replace('È', 'ê').replace('Ü', 'ü')[:40]
            if texte:
                attendus.append(texte)
    return attendus


page, dom, console, capture, *textes = sys.argv[1:]
ordonnes = []
if '--interactions' in textes:
    ordonnes = attendus_interactions(textes[textes.index('--interactions') + 1])
    textes = textes[:textes.index('--interactions')]
if '--ordre' in textes:
    ordonnes = textes[textes.index('--ordre') + 1:]
    textes = textes[:textes.index('--ordre')]
html = open(dom, encoding='utf-8').read()
lecteur = Texte()
lecteur.feed(html)
montre = lecteur.texte()

verifie(not [l for l in open(console, errors='replace') if 'CONSOLE' in l], 'no console message')
verifie(pixels_varies(capture), 'the screenshot is not blank')
for texte in textes:
    verifie(texte in html, 'the DOM holds ' + texte)
# Every link inside the page has its anchor, and the summary's entries their
# chapters.
ancres = set(re.findall(r'<a name="([^"]*)"', html))
for lien in set(re.findall(r'<a href="#([^"]*)"', html)) - {'Sommaire'}:
    verifie(lien in ancres, 'an anchor for #' + lien)
curseur = 0
for texte in ordonnes:
    texte = ' '.join(texte.split())
    trouve = montre.find(texte, curseur)
    verifie(trouve >= 0, 'in its order: ' + texte)
    if trouve >= 0:
        curseur = trouve + len(texte)
for ancre, titre in re.findall(r'<a href="#([^"]*)" class="TexteLien">([^<]*)</a>', html):
    verifie('<a name="%s" class="Titreparagraphe">%s</a>' % (ancre, titre) in html, 'a chapter ' + titre)

for e in echecs:
    print('FAILED: %s (%s)' % (e, page), file=sys.stderr)
sys.exit(1 if echecs else 0)
