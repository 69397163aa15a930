// One table file as this process sees it: an LMDB environment in a single
// file (MDB_NOSUBDIR), without LMDB's lock file (MDB_NOLOCK: the sharing is
// done by PartageFichier), opened once and kept, keyed by its path.
//
// On disk the main database holds the record "VDX32", an Entete, and named
// databases:
//   - data file: "fiches", records by position (MDB_INTEGERKEY, 32-bit,
//     never 0), and "libres", the positions freed for reuse;
//   - index file: "cle1", "cle2"... one per key, fixed-length byte keys in
//     LMDB's memcmp order, each to a 32-bit position, no duplicates.
//
// A file replaced on disk is noticed in two ways before an idle environment
// is reused: the generation of its shared record, raised by whoever replaces
// it through this store (creation over an existing path, rebuild,
// MarqueRemplace), is seen at once and without a system call; and, for
// replacements made by other tools, the path is checked with stat at most
// once a second (the clock is read from the vDSO, no system call).
#pragma once

#include <lmdb.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/magasin.h"
#include "store/partage.h"

namespace vdx::magasin {

// 0 or an error for ErreurMagasin, with its detail for EtatIOMagasin.
struct Statut {
    int16_t erreur = 0;
    int16_t io = 0;
    explicit operator bool() const { return erreur == 0; }
};

// Whether writes are synced to disk (SynchroniseEcritures).
bool& Synchronisation();
// Whether maps stop at their file's end (CartesBornees).
bool& Bornees();

// An LMDB result as a Statut; `defaut` names the failure of the operation.
Statut DeLmdb(int rc, Erreur defaut);

// An exclusive writer commits when a transaction has written this much:
// where maps are bounded, a writer's room above its pages is sized on it.
inline constexpr uint64_t OctetsParTransaction = uint64_t{1} << 20;

inline constexpr int MaxCles = 14;
inline constexpr uint32_t LongueurCleMax = 511;  // LMDB's default limit

enum class GenreFichier : uint32_t { Donnees = 1, Index = 2 };

// The record "VDX32" of the main database. Only `prochaine` changes after
// creation (and `nombreCles` when a member is added).
struct Entete {
    char magie[8];
    uint32_t version;
    GenreFichier genre;
    uint32_t longueurFiche;  // data: record length, the fixed part for variable files
    uint32_t variable;       // data: 1 for variable-length records
    uint32_t prochaine;      // data: the next position never given yet
    uint32_t nombreCles;     // index
    uint32_t longueursCles[MaxCles];
};

Entete EnteteDonnees(uint32_t longueurFiche, bool variable);
Entete EnteteIndex(const std::vector<uint32_t>& longueursCles);

// A read transaction with the cursors opened in it, kept for reuse.
struct Instantane {
    MDB_txn* txn = nullptr;
    std::array<MDB_cursor*, MaxCles> curseurs{};
    std::array<uint64_t, MaxCles> renouveles{};  // binding whose snapshot each cursor follows
};

class Fichier {
public:
    Fichier(std::string chemin, MDB_env* env, bool lectureSeule);
    ~Fichier();
    Fichier(const Fichier&) = delete;
    Fichier& operator=(const Fichier&) = delete;

    const std::string chemin;
    MDB_env* const env;
    const bool lectureSeule;  // opened MDB_RDONLY
    const uint64_t instance;  // never the same twice in a process
    systeme::IdentiteFichier identite;
    std::shared_ptr<PartageFichier> partage;
    uint32_t generation = 0;        // of the shared record when this was checked
    int64_t prochainControle = 0;   // when to stat the path again
    Entete entete{};
    size_t txnEntete = 0;           // snapshot the header was read from
    MDB_dbi fiches = 0, libres = 0;
    std::array<MDB_dbi, MaxCles> cles{};
    int liaisons = 0;   // bindings of this process
    int ecrivains = 0;  // of which writing
    bool sansCarte = false;  // a map that could not be grown: the environment is good only to close

    bool Donnees() const { return entete.genre == GenreFichier::Donnees; }
    bool Variable() const { return entete.variable != 0; }

    Statut LitEntete();

    Instantane PrendLecture(Statut& statut);
    void RendLecture(Instantane&& lecture);

    // The write transaction: one at a time in this process. A shared writer
    // takes the inter-process transaction lock for its length.
    MDB_txn* ecriture = nullptr;
    uint64_t numeroTxn = 0;  // raised at every write transaction
    uint64_t serie = 1;      // raised at every write and transaction end: saved positions go stale
    int operations = 0;      // since the last commit
    uint64_t octets = 0;     // written since the last commit
    std::array<MDB_cursor*, MaxCles> curseursEcriture{};
    std::array<uint64_t, MaxCles> txnCurseurs{};
    Statut DebutEcriture(bool partageEntreProcessus);
    Statut FinEcriture(bool valider);

private:
    // A bounded writer's map keeps room for a transaction to copy every
    // page in use and write its data (its own or another process's, which
    // shared writers see); it is grown when the room runs short, between
    // transactions, unless a read of this process holds the map.
    // LMDB's code if it could not, the file then left without a map.
    int AgranditCarte();
    std::vector<Instantane> lectures_;
    bool verrouTransaction_ = false;
};

// The environments of this process, by path.
class Fichiers {
public:
    // The file at that path, opened at need, writable if asked.
    std::shared_ptr<Fichier> Ouvre(std::string_view chemin, bool ecriture, Statut& statut);
    // A new file at that path, entered as a writer, then put in place of any
    // file there (whose readers are told).
    std::shared_ptr<Fichier> Cree(const std::string& chemin, const Entete& entete, bool exclusif, Statut& statut);
    void Vide();
    // Closes `f` if it is the file kept at its path.
    void Ferme(const Fichier& f);
    // Closes the files no number is bound to: a directory whose files this
    // process holds can't be renamed on Windows.
    void OteInactifs();

private:
    struct Hachage {
        using is_transparent = void;
        size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
    };
    std::unordered_map<std::string, std::shared_ptr<Fichier>, Hachage, std::equal_to<>> parChemin_;
};

}  // namespace vdx::magasin
