// The handlers of the update's rows: a row read by the list of its marker
// into a zeroed record, then put in its table by the rule of its marker,
// or by the marker's own handler (the products, their further data, their
// identification, the posology, the substances).
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "maj/lecture.h"
#include "maj/rangees.h"
#include "store/layouts.h"

namespace vdx::maj {

// A row as read: the record's fixed part, the key a table keeps outside its
// records, the texts of the body, the fields kept aside.
struct LigneMaj {
    std::string fiche;
    std::string cle;
    std::vector<std::string> parties;
    std::vector<std::string> aparte;
};

// A text into its field, cleared first, cut to what the field holds before
// its NUL.
void PoseTexte(std::string& fiche, const ChampTexte& champ, std::string_view texte);

// The parent of a row of a parent table: the key that begins with the
// parent's field (at `decalage`), and that field as the key lays it.
struct Parent {
    size_t cle = 0;
    std::string code;
};
Parent ParentDe(const Disposition& disposition, uint16_t decalage, std::string_view fiche);

// Reads a row's fields by its list, then passes the rest of its line.
// False when a marker or the end comes before the last field: the row is
// incomplete, and what was read of the next row is lost with it.
bool LitLigne(LecteurMaj& lecteur, const Disposition& disposition, const std::vector<ChampRangee>& champs,
              LigneMaj& ligne);

// The handlers of a file, with what they keep from row to row: the parent
// of the last row of a parent table.
class Gestionnaires {
public:
    // A new table in force: no parent yet.
    void NouvelleTable() { dernierCode_.clear(); }
    // Puts a row read by LitLigne in its tables: 1, or 0 after the message
    // box (the file then fails).
    int32_t Applique(const Rangee& rangee, LigneMaj& ligne);

private:
    // Parent rule: the first row of a parent removes its old rows from
    // each table, by the key that begins with the parent. An empty parent
    // fails the row.
    struct Effacement {
        const Table* table;
        size_t cle;
    };
    int32_t NouveauParent(std::string_view marqueur, std::string_view parent, std::initializer_list<Effacement> tables);
    int32_t Produit(LigneMaj& ligne);
    int32_t Complement(const Rangee& rangee, LigneMaj& ligne);
    int32_t Identification(LigneMaj& ligne);
    int32_t Posologie(const Rangee& rangee, LigneMaj& ligne);
    int32_t Substances(LigneMaj& ligne);

    std::string dernierCode_;
};

}  // namespace vdx::maj
