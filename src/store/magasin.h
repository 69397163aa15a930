// MagasinFiches: the one gateway to the table files of a base.
//
// Files are known by numbers (0 to 288). A data file holds records by
// position (32-bit, never 0); an index file holds, for each of its keys, an
// ordered map from a fixed-length byte key to a position, without
// duplicates. Each key number has its own current key, from which
// CleSuivante and ClePrecedente go on.
//
// Operations returning a position return 0 both for "nothing found" and for
// a failure: ErreurMagasin (in GlobalesMagasin) tells them apart. Operations
// returning an error return 0 or the error number, also left in
// ErreurMagasin. The state is process-wide and not thread-safe.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vdx::magasin {

using Position = uint32_t;

// Values of ErreurMagasin the library tests; every other non-zero value is
// only reported to the host.
enum Erreur : int16_t {
    Ok = 0,
    CleExistante = 2,      // the key to add already exists
    CleAbsente = 3,        // the key to delete does not exist
    OuvertureImpossible = 12,  // the file can't be opened
    NumeroInvalide = 22,   // a file or key number out of range, or not open
    FichierCorrompu = 30,  // the file is no table file of this store, or is damaged
    Lecture = 35,          // a record could not be read (bad position, short buffer)
    Ecriture = 36,         // a write failed, or the file is open read-only
    Creation = 40,         // a file could not be created
    PositionInvalide = 41, // no record at that position
    MemoireEpuisee = 42,
    GenreIncompatible = 43, // a variable-record operation on a fixed-length file
};

// Value of EtatIOMagasin that, with OuvertureImpossible, says the file is
// held by another process in a way that excludes this open.
inline constexpr int16_t TenuAilleurs = -8;
// With OuvertureImpossible: this process itself holds the file so (a read-only
// open while it writes it, or the reverse); waiting would not help.
inline constexpr int16_t TenuParCeProcessus = -9;
// With OuvertureImpossible: the file exists but is no table file of this
// store (foreign, truncated, empty), or a .DAT holding an index or the reverse.
inline constexpr int16_t FichierEtranger = -30;
// Other failures leave errno or LMDB's code in EtatIOMagasin.

struct Globales {
    int16_t ErreurMagasin;
    int16_t EtatIOMagasin;
};

// Open modes, a set of bits; a close is given the mode of its open.
enum Mode : int {
    Exclusif = 0,      // exclusive writing
    Partage = 1,       // others may hold the file for writing too
    Variable = 4,      // variable-length data file (the kind is taken from the file)
    LectureSeule = 8,  // no write through this open; any number of readers
};

int InitialiseMagasin(int tampons, int fichiers, int secteurs);
// Whether writes are synced to disk when a file is created and when its last
// writer closes it (the default). A process that makes throwaway bases (a
// test's fixtures) turns it off; the previous setting is returned.
bool SynchroniseEcritures(bool oui);
// Whether table files are mapped as the system requires where a map stops
// at the file's end: a reader maps the file as it stands and maps it again
// when it has grown, a writer maps a room above its pages that it grows
// between transactions, and the file is cut back to its pages when its
// writer closes it. On by itself on such systems; tests turn it on
// elsewhere. The previous setting is returned.
bool CartesBornees(bool oui);
Globales* GlobalesMagasin();
void TermineMagasin();

// Opening binds a number to a file until its close; an index binds its
// further keys on the numbers behind it. A number already bound, or at or
// above the limit given to InitialiseMagasin, gives NumeroInvalide. Any
// number of processes may hold a file read-only (8); an exclusive open (0)
// needs the file free of every other holder; shared writers (1) exclude
// readers only. A refused open gives OuvertureImpossible with TenuAilleurs
// (or TenuParCeProcessus). The kind of a data file is taken from the file.
int OpenCtFile(int numero, const char* chemin, int mode);
// The mode is not needed: a number not bound to a file gives NumeroInvalide
// and changes nothing. Writes of an exclusive binding are committed here
// (and every 10000 writes, and at any failed operation) and synced to disk;
// those of a shared binding are committed one by one.
int CloseCtFile(int numero, int mode);

// What a read-only binding of `numero` reads: the file's environment (one
// opened anew when the file was replaced) and the transaction its snapshot
// stands on. Two equal states read the same records at the same positions;
// {0, 0} for a number not bound read-only.
struct EtatLecture {
    uint64_t fichier = 0;
    uint64_t transaction = 0;
    bool operator==(const EtatLecture&) const = default;
};
EtatLecture EtatFichier(int numero);
// What a read-only open of the file at `chemin` would read now, without
// binding a number or entering the file's sharing: {0, 0} when it can't be
// opened. A value drawn from the file's records stays good while this state
// is the same.
EtatLecture EtatChemin(std::string_view chemin);

// Key operations: `tampon` receives the key found and must hold the key's
// length; `cle` is read for the key's length (pad text keys with NUL).
Position PremiereCle(int numeroCle, void* tampon);
Position DerniereCle(int numeroCle, void* tampon);
Position CleSuivante(int numeroCle, void* tampon);
Position ClePrecedente(int numeroCle, void* tampon);
// A lookup that finds nothing still places the current key where the key
// would be: CleSuivante then gives the first key above it. CleSuivante at the
// end gives 0 with ErreurMagasin 0, and ClePrecedente then the last key.
Position CleEgale(int numeroCle, const void* cle);
Position CleSuperieureOuEgale(int numeroCle, const void* cle, void* tampon);
// Length of the keys of an open key number; 0 (with an error) if not open.
int LongueurCle(int numeroCle);

// Records. A fixed record is read whole into a buffer of the record length;
// on a variable file LitFiche and WriteRecordData read and write the fixed
// part. A position without a record gives PositionInvalide. NewRecord
// reserves a record of zeros; freed positions are given again.
int LitFiche(int numero, Position position, void* tampon);
// The record at a position as it lies in the file, without a copy, through
// a read-only binding (another gives NumeroInvalide): the bytes stay good
// until the binding is closed. A fixed record is given at the length it was
// stored with.
int VueFiche(int numero, Position position, std::string_view& fiche);
// Length of a record: its own for a variable file, the record length for a fixed one.
uint32_t LongueurFiche(int numero, Position position);
int LitFicheVariable(int numero, Position position, void* tampon, uint32_t longueur);
// The whole record at a position in one lookup: a fixed record at the file's
// record length, a variable one at its own.
int LitFicheEntiere(int numero, Position position, std::string& fiche);
Position NewRecord(int numero);
Position NouvelleFicheVariable(int numero, uint32_t longueur);
int WriteRecordData(int numero, Position position, const void* tampon);
int EcritFicheVariable(int numero, Position position, const void* tampon, uint32_t longueur);
int LibereFiche(int numero, Position position);
int LibereFicheVariable(int numero, Position position);

int AddRecordKey(int numeroCle, const void* cle, Position position, int ordre);
// CleAbsente also when the key leads to another position (0 matches any).
int DeleteRecordKey(int numeroCle, const void* cle, Position position);

// Creation leaves the file open on its number with the given mode. A file
// already at that path is replaced (the new one is built aside and renamed
// over it) and its readers reopen the new one. Only plain keys without
// duplicates exist (key type and duplicates 0), of 1 to 511 bytes.
int CreateDataFile(int numero, const char* chemin, uint32_t longueurFiche, int extension, int mode);
int CreateIndexFile(int numero, const char* chemin, int longueurCle, int typeCle, int doublons,
                    int membres, int extension, int mode);
int CreateIndexMember(int numeroIndex, int longueurCle, int typeCle, int doublons, int membre);

// Rebuild of the keys of an index from the records of its data file.
struct Segment {
    uint32_t decalage;  // offset in the record
    uint32_t longueur;
};
struct DescriptionCle {
    std::vector<Segment> segments;  // the key is the segments laid end to end
};
struct DescriptionFichier {
    std::string cheminDonnees;
    std::string cheminIndex;
    uint32_t longueurFiche = 0;  // fixed part for variable files
    bool variable = false;
    std::vector<DescriptionCle> cles;  // first key, then the members
};
// Works on closed files: opens the data file exclusively, builds a new index
// file (replacing any) with one key per record and key. Records whose key is
// already there keep the first one (lowest position) and end the rebuild
// with CleExistante, the index being complete otherwise.
int ReconstruitFichier(const DescriptionFichier& description);

// Tools that rename a table file over another call this first on the path
// being replaced, so that its readers reopen it at their next open. Without
// it a replacement is still seen, within a second.
void MarqueRemplace(const char* chemin);
// The same for every file of a directory, before a whole base directory is
// renamed away and another put in its place.
void MarqueRemplaceDossier(const char* dossier);
// Closes the files this process keeps open for its next opens while no
// number is bound to them: a directory that holds such a file can't be
// renamed on Windows. They are opened again at need.
void FermeFichiersInactifs();

}  // namespace vdx::magasin
