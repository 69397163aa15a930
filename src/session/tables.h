// Opening and closing tables by name and number, and the steps of a walk:
// every failure of the store names its file in FichierErreur and leaves the
// export with -500.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/catalogue.h"
#include "store/magasin.h"

namespace vdx {

// The four pairs of open and close. They return 1 or 0; on 0 FichierErreur
// names the file.
int OuvreTable(const char* nom, int numero);
int FermeTable(const char* nom, int numero);
int OuvreTableVariable(const char* nom, int numero);
int FermeTableVariable(const char* nom, int numero);
int OuvreTableMedecin(const char* nom, int numero, int mode);
int FermeTableMedecin(const char* nom, int numero, int mode);
int OuvreTableMedecinVariable(const char* nom, int numero, int mode);
int FermeTableMedecinVariable(const char* nom, int numero, int mode);
int OuvreTableMaj(const char* nom, int numero, bool variable);
int FermeTableMaj(const char* nom, int numero, bool variable);

// What the data and index files of `tables` read now, in that order into
// `etats` (two a table), without opening them: a value drawn from their
// records stays good while their states are the same. False when a file
// can't be opened.
bool EtatsDesTables(std::span<const Table* const> tables, std::span<magasin::EtatLecture> etats);

// Closes the eight files of the doctor's base, as opened for writing and
// then for reading; failures are not reported.
void FermeBaseMedecin();

// The tables a call holds, data then index, released in the same order by
// Ferme, or on any other way out by the destructor (failures ignored there).
// Holds are counted by file number: a table that a caller already holds is
// taken again without being opened, and it is closed when its last holder
// releases it, so that a function called from inside the library opens
// what it reads whoever calls it.
class TablesOuvertes {
public:
    TablesOuvertes() = default;
    explicit TablesOuvertes(std::initializer_list<const Table*> tables);
    explicit TablesOuvertes(std::span<const Table* const> tables);
    ~TablesOuvertes();
    TablesOuvertes(const TablesOuvertes&) = delete;
    TablesOuvertes& operator=(const TablesOuvertes&) = delete;

    // Throws Echec(-500) when a file can't be opened.
    void Ouvre(const Table& table);
    // One file of the base on a number of the caller's choice (an index
    // opened on another number than the catalogue's).
    void OuvreFichier(const char* nom, int numero);
    // A table of the doctor's base, read-only, waiting while another
    // process holds it.
    void OuvreMedecin(const Table& table);
    // Throws Echec(-500) when a file can't be closed.
    void Ferme();

    // How many holders a file number has (tests); whether any has one.
    static int Detenteurs(int numero);
    static bool Tenues();

private:
    struct Fichier {
        const char* nom;
        int numero;
        bool medecin;
    };
    void Ajoute(Fichier f);
    // Each file let go, closed with its last holder; failures ignored.
    void RelacheTout();
    std::vector<Fichier> ouverts_;
};

// One key number of an open table, walked by the lookup steps. A lookup
// that finds nothing gives nullopt; a failure of the store names the index
// in FichierErreur and throws Echec(-500).
class Curseur {
public:
    Curseur(const Table& table, int cle = 0);

    std::optional<magasin::Position> Premiere();
    std::optional<magasin::Position> Derniere();
    std::optional<magasin::Position> Suivante();
    std::optional<magasin::Position> Precedente();
    // `cle` is padded with NUL to the key's length.
    std::optional<magasin::Position> Egale(std::string_view cle);
    std::optional<magasin::Position> SuperieureOuEgale(std::string_view cle);

    // The walk of the keys that begin with `prefixe`: the first at or above
    // it, then the next ones, while they begin with it.
    std::optional<magasin::Position> PremiereAvec(std::string_view prefixe);
    std::optional<magasin::Position> SuivanteAvec(std::string_view prefixe);

    // The key found by the last lookup, at the key's full length.
    std::string_view Cle() const { return {tampon_.data(), longueur_}; }

private:
    std::optional<magasin::Position> Resultat(magasin::Position p);
    std::string Complete(std::string_view cle) const;

    const Table& table_;
    int numero_;
    size_t longueur_;
    std::string tampon_;  // short keys stay within the string itself
};

// The bytes of the record at a position, fixed or variable; a failure names
// the data file and throws Echec(-500).
std::string FicheA(const Table& table, magasin::Position position);
// The same without a copy: the bytes stay good while the caller holds the
// table open.
std::string_view VueFicheA(const Table& table, magasin::Position position);

}  // namespace vdx
