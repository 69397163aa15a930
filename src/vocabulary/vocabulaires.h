// The vocabularies that the step searches, the keyword searches and the
// label lookups walk. A vocabulary is a table with a code key and a label
// key; what differs from one to the next is said here once, and the engines
// (recherche.h, libelles.h) take it as their parameter.
#pragma once

#include <cstdint>
#include <optional>

#include "session/lignes.h"
#include "store/catalogue.h"
#include "store/champ.h"

namespace vdx {

// The longest search text, in the engines' buffers of 255 bytes: a prefix of
// the engines or a word of any keyword search is cut there.
inline constexpr uint16_t TexteRechercheMax = 254;

struct Vocabulaire {
    const Table* table;
    // The number its index is opened on; its further keys follow it. The
    // catalogue's, except for the step search of excipients, which opens
    // VDXVEXC.NDX on 108.
    uint16_t index;
    // The key walked by the searches: index + decalage. 0 is the code key.
    uint16_t decalage;
    Champ code;  // a text, or an integer for the substances
    ChampTexte libelle;  // the label a row shows
    // The folded label of the record, compared by the keyword search of the
    // copies (RechercheFamilleLexico_Vdx and its siblings).
    std::optional<ChampTexte> libelleCle;
    // A prefix is folded and cut to this length: TexteRechercheMax in the
    // engines, the length of the first part of the key walked in the copies.
    uint16_t longueurPrefixe;
    // The record of a row: code, label, and for three strings an empty text.
    Gabarit gabarit;

    // The key walked, relative to the table's own index (for Curseur).
    int Membre() const { return index + decalage - table->index(); }
    // The first key of the index, the code, by the same reckoning.
    int MembreCode() const { return index - table->index(); }
};

// The vocabularies, each a single object for the life of the process, made
// at its first use. The engines take these functions rather than their
// objects, so that the first use falls inside the frame of an export.
using VocabulaireDe = const Vocabulaire& (*)();

namespace vocabulaires {

const Vocabulaire& AMM();           // VDXVAMM, first label key
const Vocabulaire& AllergieAMM();   // VDXVAMM, second label key
const Vocabulaire& CIM10();         // VDXVCIM
const Vocabulaire& ChapitresCIM10(); // VDXVCIMA, codes under three characters
const Vocabulaire& CISP();          // VDXVCISP
const Vocabulaire& PA();            // VDXVPA
const Vocabulaire& ExcipientParPas(); // VDXVEXC, index on 108: key 109
const Vocabulaire& Excipient();     // VDXVEXC, index on 107: key 108
const Vocabulaire& EEN();           // VDXVEXC, index on 107: key 109, the second label
const Vocabulaire& Classe();        // VDXCLA
const Vocabulaire& ClasseATC();     // VDXYATC
const Vocabulaire& ClasseDCI();     // VDXWCLAD
const Vocabulaire& Famille();       // VDXFAM, walked by its code
const Vocabulaire& Forme();         // VDXIDFOR
const Vocabulaire& Laboratoire();   // VDXLAB
const Vocabulaire& Examen();        // VDXZBEXA
const Vocabulaire& Item();          // VDXZBEXI
const Vocabulaire& DicoPatho();     // VDXWDICO
const Vocabulaire& MedDC();         // VDXYDCI

}  // namespace vocabulaires
}  // namespace vdx
