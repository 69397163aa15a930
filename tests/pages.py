"""Checks of a page the library wrote, as headless Chromium showed it.

    pages.py PAGE DOM CONSOLE SCREENSHOT [TEXT...]

PAGE is the file as written, DOM the document Chromium dumped (UTF-8),
CONSOLE what it logged, SCREENSHOT its picture. Each TEXT must be in the
DOM. Prints what fails and exits 1.
"""
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


page, dom, console, capture, *textes = sys.argv[1:]
html = open(dom, encoding='utf-8').read()

verifie(not [l for l in open(console, errors='replace') if 'CONSOLE' in l], 'no console message')
verifie(pixels_varies(capture), 'the screenshot is not blank')
for texte in textes:
    verifie(texte in html, 'the DOM holds ' + texte)
# Every link inside the page has its anchor, and the summary's entries their
# chapters.
ancres = set(re.findall(r'<a name="([^"]*)"', html))
for lien in set(re.findall(r'<a href="#([^"]*)"', html)):
    verifie(lien in ancres, 'an anchor for #' + lien)
for ancre, titre in re.findall(r'<a href="#([^"]*)" class="TexteLien">(.*?)</a>', html):
    verifie('<a name="%s" class="Titreparagraphe">%s</a>' % (ancre, titre) in html, 'a chapter ' + titre)

for e in echecs:
    print('FAILED: %s (%s)' % (e, page), file=sys.stderr)
sys.exit(1 if echecs else 0)
