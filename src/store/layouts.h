// The layout (Disposition) of every table of the catalogue: its record
// length, its fields and its keys, and for variable tables how a record is
// composed. Readers, the builder and the dump of bases, the update handlers
// and the test fixtures all go through these, so that an offset is written
// once: in the field handles of store/layouts/, included below.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/catalogue.h"
#include "store/champ.h"
#include "store/layouts/allergies.h"
#include "store/layouts/composition.h"
#include "store/layouts/documents.h"
#include "store/layouts/identification.h"
#include "store/layouts/interactions.h"
#include "store/layouts/medecin.h"
#include "store/layouts/posologie.h"
#include "store/layouts/produits.h"
#include "store/layouts/reglementaire.h"

namespace vdx {

// How a part of a key is made from its field.
enum class Pli : uint8_t {
    Brut,        // a text up to its NUL, an integer's four bytes as stored
    Majuscules,  // the text folded by MajusculeSansAccent
    Libelle,     // the text folded by PlieCleLibelle, its final points kept
    Decimal,     // an integer in decimal, with leading zeros to the part's length
};

// A field laid into a key: its text cut to the part's length, the rest of
// the part filled with `bourrage`.
struct PartieCle {
    Champ champ;
    uint16_t longueur;
    Pli pli = Pli::Brut;
    char bourrage = '\0';
};

// The rule that makes a label key unique: when a key is refused as present,
// the byte at `seuil` of the key and of the label is raised by one if the
// key has `seuil` characters or more; otherwise a point is appended to both.
struct RegleUnicite {
    uint16_t seuil;
    ChampTexte libelle;
};

struct Cle {
    uint16_t longueur;
    std::vector<PartieCle> parties;  // laid end to end, then NUL to the length
    std::optional<RegleUnicite> unicite;
    // A record whose first part is an empty text is not filed under this key.
    bool facultative = false;
};

// What follows the fixed part of a variable record.
enum class Corps : uint8_t {
    Fixe,           // nothing: a fixed record
    Chapitres,      // a header of 32 lengths (128 bytes), then the sections
    TexteFinal,     // one text from `debutCorps` to the end of the record
    OctetsFinal,    // raw bytes from `debutCorps` (pictures, documents)
    TextesMesures,  // texts behind the fixed part, their lengths in fields of it
};

struct Disposition {
    const Table* table = nullptr;
    // Record length; for a variable table, its fixed part (the length given
    // at creation, and the least length of a record).
    uint32_t longueur = 0;
    std::vector<Champ> champs;
    std::vector<Cle> cles;  // by key number: the index, then its members
    // When not empty, the first key is laid by these fields (offsets in the
    // key) and no byte of the record holds it: chapter records, texts.
    std::vector<Champ> champsCle;
    Corps corps = Corps::Fixe;
    uint32_t debutCorps = 0;
    std::vector<std::string> parties;      // names of the texts or bytes of the body
    std::vector<ChampEntier> longueurs;  // TextesMesures: the length of each text
};

std::span<const Disposition> Dispositions();
const Disposition& DispositionDe(const Table& table);
const Disposition* DispositionNommee(std::string_view nom);

// The columns of a table in its sources, in their order: the fields of an
// outside key, the fields of the record (lengths of texts excepted), then
// the parts of the body.
enum class GenreColonne : uint8_t { ChampCle, ChampFiche, Partie };
struct Colonne {
    std::string nom;
    GenreColonne genre;
    Champ champ{};      // for the fields
    size_t partie = 0;  // for the parts
};
std::vector<Colonne> Colonnes(const Disposition& disposition);

// A record composed from its fixed part and the parts of its body: lengths
// written, texts laid behind, padded with NUL to the fixed part.
std::string ComposeFiche(const Disposition& disposition, std::string fixe, const std::vector<std::string>& parties);
// The parts of the body of a record, in the order of `parties`.
std::vector<std::string_view> PartiesDe(const Disposition& disposition, std::string_view fiche);

}  // namespace vdx
