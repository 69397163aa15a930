// Files on Linux. The shared record of a file is a file of /dev/shm (else
// $XDG_RUNTIME_DIR, else /tmp) named from the device and inode, mode 0666,
// mapped shared; its locks are open-file-description locks on it. Byte
// Presence (past those of the callers) is held shared by every process that
// has the record open: the first record a process opens makes it sweep away
// the records nobody holds, which would pile up, one for every table file
// ever made.
#include "platform/fichiers.h"

#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace vdx::systeme {

struct RecordPartage::Systeme {
    int fd;
};

namespace {

// Past every byte the callers lock.
constexpr off_t Presence = 1 << 20;

struct Dossiers {
    std::string dossier;
    bool balaye = false;
};
Dossiers& Registre() {
    static Dossiers* d = new Dossiers;  // left to the process
    return *d;
}

const std::string& Dossier() {
    std::string& dossier = Registre().dossier;
    if (dossier.empty()) {
        const char* xdg = std::getenv("XDG_RUNTIME_DIR");
        for (const char* d : {"/dev/shm", xdg, "/tmp"}) {
            if (d && *d && ::access(d, W_OK | X_OK) == 0) {
                dossier = d;
                break;
            }
        }
        if (dossier.empty()) dossier = "/tmp";
    }
    return dossier;
}

std::string NomRecord(const IdentiteFichier& id) {
    char nom[64];
    std::snprintf(nom, sizeof nom, "/vdx32-%llx-%llx", static_cast<unsigned long long>(id.volume),
                  static_cast<unsigned long long>(id.index));
    return Dossier() + nom;
}


bool Verrou(int fd, short type, off_t octet, bool attendre) {
    struct flock fl {};
    fl.l_type = type;
    fl.l_whence = SEEK_SET;
    fl.l_start = octet;
    fl.l_len = 1;
    int r;
    while ((r = ::fcntl(fd, attendre ? F_OFD_SETLKW : F_OFD_SETLK, &fl)) == -1 && errno == EINTR) {
    }
    if (r != 0 && errno == EACCES) errno = EAGAIN;
    return r == 0;
}

void Balaie() {
    DIR* d = ::opendir(Dossier().c_str());
    if (!d) return;
    while (const dirent* e = ::readdir(d)) {
        if (std::strncmp(e->d_name, "vdx32-", 6) != 0) continue;
        const std::string nom = Dossier() + "/" + e->d_name;
        const int fd = ::open(nom.c_str(), O_RDWR | O_CLOEXEC);
        if (fd < 0) continue;
        // Unlinked only while the name is still the file locked: another
        // sweep may have unlinked it meanwhile and a process made the
        // record again at its name, held.
        struct stat ouvert {}, nomme {};
        if (Verrou(fd, F_WRLCK, Presence, false) && ::fstat(fd, &ouvert) == 0 && ouvert.st_nlink > 0 &&
            ::stat(nom.c_str(), &nomme) == 0 && nomme.st_ino == ouvert.st_ino && nomme.st_dev == ouvert.st_dev)
            ::unlink(nom.c_str());
        ::close(fd);
    }
    ::closedir(d);
}

// The record file, held: a sweep that took it meanwhile leaves it unlinked,
// then it is made again.
int OuvreRecord(const std::string& nom, bool creer) {
    for (;;) {
        const int fd = ::open(nom.c_str(), O_RDWR | O_CLOEXEC | (creer ? O_CREAT : 0), 0666);
        if (fd < 0) return -1;
        struct stat st {};
        if (!Verrou(fd, F_RDLCK, Presence, true) || ::fstat(fd, &st) != 0) {
            const int e = errno;
            ::close(fd);
            errno = e;
            return -1;
        }
        if (st.st_nlink > 0) return fd;
        ::close(fd);
        if (!creer) {
            errno = ENOENT;
            return -1;
        }
    }
}

std::unique_ptr<RecordPartage> Echec(int fd) {
    const int e = errno;
    ::close(fd);
    errno = e;
    return nullptr;
}

EtatFichier DeStat(const struct stat& st) {
    return {{static_cast<uint64_t>(st.st_dev), static_cast<uint64_t>(st.st_ino)},
            static_cast<uint64_t>(st.st_size), S_ISREG(st.st_mode)};
}

// The record of an open descriptor (negative: the open failed), mapped;
// `agrandir` brings a new record to its size, else a short one is refused.
std::unique_ptr<RecordPartage> Projette(int fd, size_t taille, bool agrandir) {
    if (fd < 0) return nullptr;
    struct stat st {};
    if (::fstat(fd, &st) != 0) return Echec(fd);
    if (st.st_size < static_cast<off_t>(taille)) {
        if (!agrandir) {
            ::close(fd);
            errno = ENOENT;
            return nullptr;
        }
        if (::ftruncate(fd, static_cast<off_t>(taille)) != 0) return Echec(fd);
    }
    // Other users' processes read the same base: the umask must not keep them out.
    if (agrandir && (st.st_mode & 0666) != 0666 && st.st_uid == ::geteuid()) ::fchmod(fd, 0666);
    void* zone = ::mmap(nullptr, taille, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    if (zone == MAP_FAILED) return Echec(fd);
    return std::make_unique<RecordPartage>(std::make_unique<RecordPartage::Systeme>(RecordPartage::Systeme{fd}), zone,
                                           taille);
}

}  // namespace

bool DecritChemin(const char* chemin, EtatFichier& etat) {
    struct stat st {};
    if (::stat(chemin, &st) != 0) return false;
    etat = DeStat(st);
    return true;
}

bool DecritOuvert(intptr_t descripteur, EtatFichier& etat) {
    struct stat st {};
    if (::fstat(static_cast<int>(descripteur), &st) != 0) return false;
    etat = DeStat(st);
    return true;
}

intptr_t Duplique(intptr_t descripteur) { return ::dup(static_cast<int>(descripteur)); }

bool FixeTailleEtFerme(intptr_t descripteur, uint64_t taille) {
    const bool fait = ::ftruncate(static_cast<int>(descripteur), static_cast<off_t>(taille)) == 0;
    ::close(static_cast<int>(descripteur));
    return fait;
}

bool EcritFichierSur(const std::string& chemin, std::string_view texte) {
    const int f = ::open(chemin.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (f < 0) return false;
    size_t ecrits = 0;
    while (ecrits < texte.size()) {
        const ssize_t n = ::write(f, texte.data() + ecrits, texte.size() - ecrits);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        ecrits += static_cast<size_t>(n);
    }
    const bool ok = ecrits == texte.size() && ::fsync(f) == 0;
    return ::close(f) == 0 && ok;
}

bool RenommeFichier(const std::string& de, const std::string& vers) { return ::rename(de.c_str(), vers.c_str()) == 0; }

bool RemplaceDossier(const std::string& neuf, const std::string& place, const std::string& ecarte) {
    if (::renameat2(AT_FDCWD, neuf.c_str(), AT_FDCWD, place.c_str(), RENAME_EXCHANGE) != 0) return false;
    if (::rename(neuf.c_str(), ecarte.c_str()) != 0) {
        const int e = errno;
        ::renameat2(AT_FDCWD, neuf.c_str(), AT_FDCWD, place.c_str(), RENAME_EXCHANGE);
        errno = e;
        return false;
    }
    return true;
}

bool AttendsDossier(const std::string& dossier) {
    std::error_code e;
    return std::filesystem::is_directory(dossier, e);
}

bool CreeDossierUnique(std::string& modele) { return ::mkdtemp(modele.data()) != nullptr; }

std::string DossierEphemere() {
    static const std::string dossier = [] {
        std::error_code e;
        const auto place = std::filesystem::space("/dev/shm", e);
        return !e && place.available >= (uint64_t{1} << 30) ? std::string("/dev/shm")
                                                               : std::filesystem::temp_directory_path().string();
    }();
    return dossier;
}

void ApresFork(void (*action)()) { pthread_atfork(nullptr, nullptr, action); }

RecordPartage::RecordPartage(std::unique_ptr<Systeme> systeme, void* zone, size_t taille)
    : systeme_(std::move(systeme)), zone_(zone), taille_(taille) {}

std::unique_ptr<RecordPartage> RecordPartage::Ouvre(const IdentiteFichier& identite, const char*, size_t taille) {
    if (!Registre().balaye) {
        Registre().balaye = true;
        Balaie();
    }
    return Projette(OuvreRecord(NomRecord(identite), true), taille, true);
}

std::unique_ptr<RecordPartage> RecordPartage::OuvreExistant(const IdentiteFichier& identite, const char*,
                                                            size_t taille) {
    return Projette(OuvreRecord(NomRecord(identite), false), taille, false);
}

RecordPartage::~RecordPartage() {
    if (!zone_) return;
    ::munmap(zone_, taille_);
    ::close(systeme_->fd);  // releases our locks
}

bool RecordPartage::Verrouille(int octet, bool exclusif, bool attendre) {
    return Verrou(systeme_->fd, exclusif ? F_WRLCK : F_RDLCK, octet, attendre);
}

void RecordPartage::Deverrouille(int octet) { Verrou(systeme_->fd, F_UNLCK, octet, false); }

bool RecordPartage::TenuParAutre(int octet) const {
    struct flock fl {};
    fl.l_type = F_WRLCK;
    fl.l_whence = SEEK_SET;
    fl.l_start = octet;
    fl.l_len = 1;
    if (::fcntl(systeme_->fd, F_OFD_GETLK, &fl) != 0) return true;  // in doubt, someone holds it
    return fl.l_type != F_UNLCK;
}

void RecordPartage::Abandonne() {
    ::munmap(zone_, taille_);
    ::close(systeme_->fd);
    systeme_->fd = -1;
    zone_ = nullptr;
}

void FixeDossierPartage(std::string dossier) {
    Registre().dossier = std::move(dossier);
    Registre().balaye = false;
}

}  // namespace vdx::systeme
