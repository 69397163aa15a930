// An update file applied as one unit: the tables it touches are copied
// aside when its rows first open them, its rows and the base's new date go
// into the copies, and only once the whole file went through are the
// copies closed (synced) and put in place through a journal: the list of
// renames written atomically, then the renames, then the journal removed.
// A unit that stops before leaves the base as it was and its copies are
// removed; a journal found by the next connection or run is finished, and
// the next run removes copies left without one.
#pragma once

#include <string>
#include <vector>

#include "store/catalogue.h"

namespace vdx::maj {

// The suffix of a table file's copy, and the journal of a base.
inline constexpr char SuffixeCopie[] = ".maj";
inline constexpr char NomJournal[] = "VDXMAJ.JNL";

class UniteMaj {
public:
    explicit UniteMaj(std::string base) : base_(std::move(base)) {}
    ~UniteMaj();  // an unfinished unit is abandoned
    UniteMaj(const UniteMaj&) = delete;
    UniteMaj& operator=(const UniteMaj&) = delete;

    // Opens a table's copy for writing (made at its first open) on the
    // table's numbers: store mode 0, or 4 for variable records; a failed
    // open is closed read-only and tried once more. Throws Echec(-500) with
    // the file in FichierErreur.
    void Ouvre(const Table& table);
    // Closes it (its writes committed and synced).
    void Ferme(const Table& table);
    // Puts every copy in place. Throws Echec(-500) when the journal can't
    // be written; a rename that fails stays in the journal for the next
    // start.
    void Valide();
    // Closes what is open and removes the copies.
    void Abandonne();

private:
    std::string Chemin(const char* fichier) const;
    void OuvreFichier(int numero, const char* fichier, int mode);

    std::string base_;
    std::vector<const Table*> copiees_;
    std::vector<const Table*> ouvertes_;
    bool finie_ = false;
};

// Finishes the journal of an interrupted unit in `base`: one look at the
// journal's path, nothing more, so that a connection may call it each time
// (listing the directory would hold it, and on Windows a base put in place
// under a reader renames its directory). False when a rename failed and the
// journal stays for the next time.
bool TermineJournal(const std::string& base);
// The same, then the copies that no journal names removed.
bool TermineMajInterrompue(const std::string& base);

}  // namespace vdx::maj
