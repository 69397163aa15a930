// Files as the store sees them on this system: their identity, which a
// replacement changes; unique directories; and the small shared record,
// with its one-byte locks, through which the processes that hold a table
// file share it.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vdx::systeme {

// The same for every path to a file, another for the file that replaces it
// (device and inode; volume serial number and file index on Windows).
struct IdentiteFichier {
    uint64_t volume = 0;
    uint64_t index = 0;
    auto operator<=>(const IdentiteFichier&) const = default;
};
struct EtatFichier {
    IdentiteFichier identite;
    uint64_t taille = 0;
    bool regulier = false;  // a plain file
};
// False with errno set.
bool DecritChemin(const char* chemin, EtatFichier& etat);
// A file open in LMDB: `descripteur` is its descriptor on Linux, its HANDLE
// on Windows, cast to an integer.
bool DecritOuvert(intptr_t descripteur, EtatFichier& etat);
// Another handle on the same open file, which outlives the first; -1 on
// failure.
intptr_t Duplique(intptr_t descripteur);
// Sets the length of the file under a handle from Duplique, then closes the
// handle; false if the length could not be set.
bool FixeTailleEtFerme(intptr_t descripteur, uint64_t taille);

// Whether a map of a file stops at the file's end and a writer's map sets
// the file's length (Windows); elsewhere a map may reach past the end and
// sees the file grow into it.
// And whether a file held open may be replaced by a rename (not on Windows).
#ifdef _WIN32
inline constexpr bool CarteBorneeAuFichier = true;
inline constexpr bool RemplacableOuvert = false;
#else
inline constexpr bool CarteBorneeAuFichier = false;
inline constexpr bool RemplacableOuvert = true;
#endif

// Puts directory `neuf` in the place of `place`, whose old content ends at
// `ecarte` (which must not exist); false with errno set, nothing moved. On
// Linux in one step; on Windows in two renames, `place` briefly absent.
bool RemplaceDossier(const std::string& neuf, const std::string& place, const std::string& ecarte);
// Writes `texte` into a new file `chemin` (replacing one) and makes it
// durable before returning: flushed and synced to the disk. False on any
// failure.
bool EcritFichierSur(const std::string& chemin, std::string_view texte);
// Renames file `de` to `vers`, replacing a file there in one step; false
// with nothing moved.
bool RenommeFichier(const std::string& de, const std::string& vers);
// Whether directory `dossier` exists, waiting for it up to half a second
// where a replacement leaves it briefly absent (Windows).
bool AttendsDossier(const std::string& dossier);

// Makes a new directory from `modele`, whose last six characters "XXXXXX"
// are replaced; false with errno set.
bool CreeDossierUnique(std::string& modele);

// Where throwaway files go (a test's bases): in memory (/dev/shm) on Linux
// when it has a gigabyte free, else the system's temporary directory.
std::string DossierEphemere();

// Runs `action` in the child of a fork (Linux); nothing where there is none.
void ApresFork(void (*action)());

// A record of `taille` bytes shared by every process that holds the file of
// an identity, all zeros when first made, and locks on its bytes numbered
// from 0: each is held by one process exclusively or by several shared, and
// is released when its process ends, however it ends.
class RecordPartage {
public:
    // Made at need; null with errno set. `chemin` names the file.
    static std::unique_ptr<RecordPartage> Ouvre(const IdentiteFichier& identite, const char* chemin, size_t taille);
    // Only when a process holds it; null otherwise.
    static std::unique_ptr<RecordPartage> OuvreExistant(const IdentiteFichier& identite, const char* chemin,
                                                         size_t taille);
    ~RecordPartage();
    RecordPartage(const RecordPartage&) = delete;
    RecordPartage& operator=(const RecordPartage&) = delete;

    void* Zone() const { return zone_; }
    // False when another process holds the byte in a way that excludes this
    // lock (errno EAGAIN), or on failure; `attendre` waits for it instead.
    bool Verrouille(int octet, bool exclusif, bool attendre);
    void Deverrouille(int octet);
    // Whether another process holds a lock on the byte (true in doubt).
    bool TenuParAutre(int octet) const;
    // In a child after fork: let go of the parent's mapping and descriptor
    // without unlocking (the locks are the parent's).
    void Abandonne();

    // What the system holds of it, known only to the system's side.
    struct Systeme;
    RecordPartage(std::unique_ptr<Systeme> systeme, void* zone, size_t taille);

private:
    std::unique_ptr<Systeme> systeme_;
    void* zone_;
    size_t taille_;
};

// Directory of the shared records on Linux; tests point it at their own.
void FixeDossierPartage(std::string dossier);

}  // namespace vdx::systeme
