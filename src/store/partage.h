// Sharing of one table file between processes, without LMDB's lock file (a
// base directory may be read-only).
//
// Each table file has a small shared record (systeme::RecordPartage: a
// 4 KiB file of /dev/shm named from the file's device and inode on Linux, a
// named shared-memory section on Windows). It holds:
//   - a generation, raised by whoever replaces the file (MarqueRemplace);
//   - eight writer words, the process numbers of those holding the file for
//     writing;
//   - reader slots, one per process that reads the file: an "active" word.
// and locks on its bytes, released by the system when a process dies, so a
// killed process never locks a file out:
//   - byte 0: every writing process holds it, shared for shared writing
//     (mode 1), exclusive for exclusive writing (mode 0);
//   - byte 1: held for the length of each write transaction of shared
//     writers, which serialises them;
//   - byte 64 + i: held for life by the owner of reader slot i, which proves
//     that owner alive.
//
// A reader marks its slot active, then looks at the writer words: both are
// sequentially consistent atomics, and a writer publishes its word before it
// looks at the slots, so one of the two always sees the other. When no
// writer word is set, entering as a reader costs no system call. A word left
// by a killed writer is noticed because nobody holds byte 0 any more; a slot
// left active by a killed reader is passed over because nobody holds its
// byte.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/fichiers.h"

namespace vdx::magasin {

enum class Entree {
    Ok,
    TenuAilleurs,  // another process holds the file in a way that excludes this one
    TenuIci,       // this process itself holds it so
    Impossible,    // the shared record could not be made (errno tells)
};

class PartageFichier {
public:
    // The record of the file with this identity, made at need; null with errno set on failure.
    static std::shared_ptr<PartageFichier> Pour(const systeme::IdentiteFichier& identite, const char* chemin);
    ~PartageFichier();
    PartageFichier(const PartageFichier&) = delete;
    PartageFichier& operator=(const PartageFichier&) = delete;

    Entree EntreLecteur();
    void SortLecteur();
    Entree EntreEcrivain(bool exclusif);
    void SortEcrivain();

    // Around each write transaction of a shared writer.
    bool VerrouilleTransaction();
    void DeverrouilleTransaction();

    // In a child after fork: let go of the parent's descriptor and mapping,
    // without unlocking (the locks belong to the parent's descriptions).
    void Abandonne();

    uint32_t Generation() const;
    void MarqueRemplace();

    struct Zone;

private:
    explicit PartageFichier(std::unique_ptr<systeme::RecordPartage> record);
    bool PrendEmplacementLecteur();
    bool EcrivainVivant() const;
    bool LecteurActifAilleurs() const;

    std::unique_ptr<systeme::RecordPartage> record_;
    Zone* zone_;
    int emplacementLecteur_ = -1;  // our reader slot, taken on the first read
    int emplacementEcrivain_ = -1;
    // Bindings of this process on the file.
    int lecteursIci_ = 0;
    int ecrivainsIci_ = 0;
    bool exclusifIci_ = false;
};

// Raises the generation of the file at `chemin`, if it exists and has a
// record: call it before renaming another file over it, so that readers
// reopen it at their next open.
void MarqueRemplaceChemin(const char* chemin);

// Directory of the shared records; tests point it at their own.
void FixeDossierPartage(std::string dossier);

// In a child after fork: forget the parent's records without touching them
// (their locks belong to the parent's open file descriptions).
void AbandonnePartages();

}  // namespace vdx::magasin
