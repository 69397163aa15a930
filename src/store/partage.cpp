#include "store/partage.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <utility>

namespace vdx::magasin {

namespace {

constexpr int EmplacementsEcrivains = 8;
constexpr int EmplacementsLecteurs = 500;
constexpr off_t OctetEcrivains = 0;
constexpr off_t OctetTransaction = 1;
constexpr off_t OctetPresence = 2;
constexpr off_t PremierOctetLecteur = 64;
constexpr size_t TailleZone = 4096;

}  // namespace

struct PartageFichier::Zone {
    std::atomic<uint32_t> generation;
    uint32_t reserve[7];
    std::atomic<int32_t> ecrivains[EmplacementsEcrivains];
    struct Lecteur {
        std::atomic<int32_t> pid;  // for whoever looks at the record; the lock proves life
        std::atomic<int32_t> actif;
    } lecteurs[EmplacementsLecteurs];
};
static_assert(sizeof(PartageFichier::Zone) <= TailleZone);
static_assert(std::atomic<int32_t>::is_always_lock_free);

namespace {

// A fresh file is all zeros, which is a valid empty record: no set-up race.
struct Registre {
    std::map<std::pair<dev_t, ino_t>, std::weak_ptr<PartageFichier>> parIdentite;
    std::string dossier;
    bool balaye = false;
};

Registre* registre = new Registre;  // left to the process; a forked child drops it

const std::string& Dossier() {
    if (registre->dossier.empty()) {
        const char* xdg = std::getenv("XDG_RUNTIME_DIR");
        for (const char* d : {"/dev/shm", xdg, "/tmp"}) {
            if (d && *d && ::access(d, W_OK | X_OK) == 0) {
                registre->dossier = d;
                break;
            }
        }
        if (registre->dossier.empty()) registre->dossier = "/tmp";
    }
    return registre->dossier;
}

std::string NomRecord(dev_t dev, ino_t ino) {
    char nom[64];
    std::snprintf(nom, sizeof nom, "/vdx32-%llx-%llx", static_cast<unsigned long long>(dev),
                  static_cast<unsigned long long>(ino));
    return Dossier() + nom;
}

PartageFichier::Zone* Projette(int fd) {
    void* p = ::mmap(nullptr, TailleZone, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    return p == MAP_FAILED ? nullptr : static_cast<PartageFichier::Zone*>(p);
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
    return r == 0;
}

// Whether another open file description holds a lock on that byte.
bool TenuParAutre(int fd, off_t octet) {
    struct flock fl {};
    fl.l_type = F_WRLCK;
    fl.l_whence = SEEK_SET;
    fl.l_start = octet;
    fl.l_len = 1;
    if (::fcntl(fd, F_OFD_GETLK, &fl) != 0) return true;  // in doubt, someone holds it
    return fl.l_type != F_UNLCK;
}

// Records nobody holds (every holder keeps a shared lock on byte 2) belong
// to files no process has open: they go, or they would pile up, one for every
// table file ever made.
void Balaie() {
    DIR* d = ::opendir(Dossier().c_str());
    if (!d) return;
    while (const dirent* e = ::readdir(d)) {
        if (std::strncmp(e->d_name, "vdx32-", 6) != 0) continue;
        const std::string nom = Dossier() + "/" + e->d_name;
        const int fd = ::open(nom.c_str(), O_RDWR | O_CLOEXEC);
        if (fd < 0) continue;
        if (Verrou(fd, F_WRLCK, OctetPresence, false)) ::unlink(nom.c_str());
        ::close(fd);
    }
    ::closedir(d);
}

// The record file, held: a sweep that took it meanwhile leaves it unlinked, then it is made again.
int OuvreRecord(const std::string& nom) {
    for (;;) {
        const int fd = ::open(nom.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (fd < 0) return -1;
        struct stat st {};
        if (!Verrou(fd, F_RDLCK, OctetPresence, true) || ::fstat(fd, &st) != 0) {
            const int e = errno;
            ::close(fd);
            errno = e;
            return -1;
        }
        if (st.st_nlink > 0) return fd;
        ::close(fd);
    }
}

}  // namespace

std::shared_ptr<PartageFichier> PartageFichier::Pour(dev_t dev, ino_t ino) {
    auto& cache = registre->parIdentite[{dev, ino}];
    if (auto p = cache.lock()) return p;
    if (!registre->balaye) {
        registre->balaye = true;
        Balaie();
    }
    const std::string nom = NomRecord(dev, ino);
    const int fd = OuvreRecord(nom);
    if (fd < 0) return nullptr;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || (st.st_size < static_cast<off_t>(TailleZone) && ::ftruncate(fd, TailleZone) != 0)) {
        const int e = errno;
        ::close(fd);
        errno = e;
        return nullptr;
    }
    // Other users' processes read the same base: the umask must not keep them out.
    if ((st.st_mode & 0666) != 0666 && st.st_uid == ::geteuid()) ::fchmod(fd, 0666);
    Zone* zone = Projette(fd);
    if (!zone) {
        const int e = errno;
        ::close(fd);
        errno = e;
        return nullptr;
    }
    std::shared_ptr<PartageFichier> p(new PartageFichier(fd, zone));
    cache = p;
    return p;
}

PartageFichier::~PartageFichier() {
    if (!zone_) return;
    ::munmap(zone_, TailleZone);
    ::close(fd_);  // releases our locks
}

bool PartageFichier::PrendEmplacementLecteur() {
    for (int i = 0; i < EmplacementsLecteurs; ++i) {
        // The slot's lock decides who owns it: a dead owner's lock is gone.
        if (Verrou(fd_, F_WRLCK, PremierOctetLecteur + i, false)) {
            zone_->lecteurs[i].actif.store(0, std::memory_order_seq_cst);
            zone_->lecteurs[i].pid.store(static_cast<int32_t>(::getpid()), std::memory_order_relaxed);
            emplacementLecteur_ = i;
            return true;
        }
    }
    errno = EUSERS;
    return false;
}

bool PartageFichier::EcrivainVivant() const { return TenuParAutre(fd_, OctetEcrivains); }

bool PartageFichier::LecteurActifAilleurs() const {
    for (int i = 0; i < EmplacementsLecteurs; ++i) {
        if (i == emplacementLecteur_) continue;
        if (zone_->lecteurs[i].actif.load(std::memory_order_seq_cst) == 0) continue;
        if (TenuParAutre(fd_, PremierOctetLecteur + i)) return true;
    }
    return false;
}

Entree PartageFichier::EntreLecteur() {
    if (ecrivainsIci_ > 0) return Entree::TenuIci;
    if (lecteursIci_ > 0) {
        // Our slot is already active: no writer can have come in since.
        ++lecteursIci_;
        return Entree::Ok;
    }
    if (emplacementLecteur_ < 0 && !PrendEmplacementLecteur()) return Entree::Impossible;
    auto& actif = zone_->lecteurs[emplacementLecteur_].actif;
    actif.store(1, std::memory_order_seq_cst);
    bool mot = false;
    for (auto& e : zone_->ecrivains) mot |= e.load(std::memory_order_seq_cst) != 0;
    if (mot) {
        if (EcrivainVivant()) {
            actif.store(0, std::memory_order_seq_cst);
            return Entree::TenuAilleurs;
        }
        // Words of writers that died: nobody holds byte 0 any more. A writer
        // coming in right now will see our slot and withdraw.
        for (auto& e : zone_->ecrivains) {
            int32_t v = e.load(std::memory_order_seq_cst);
            if (v != 0) e.compare_exchange_strong(v, 0, std::memory_order_seq_cst);
        }
    }
    lecteursIci_ = 1;
    return Entree::Ok;
}

void PartageFichier::SortLecteur() {
    if (lecteursIci_ > 0 && --lecteursIci_ == 0)
        zone_->lecteurs[emplacementLecteur_].actif.store(0, std::memory_order_seq_cst);
}

Entree PartageFichier::EntreEcrivain(bool exclusif) {
    if (lecteursIci_ > 0 || exclusifIci_ || (exclusif && ecrivainsIci_ > 0)) return Entree::TenuIci;
    if (ecrivainsIci_ > 0) {
        ++ecrivainsIci_;
        return Entree::Ok;
    }
    if (!Verrou(fd_, exclusif ? F_WRLCK : F_RDLCK, OctetEcrivains, false))
        return errno == EAGAIN || errno == EACCES ? Entree::TenuAilleurs : Entree::Impossible;
    auto renonce = [&](Entree e) {
        if (emplacementEcrivain_ >= 0) zone_->ecrivains[emplacementEcrivain_].store(0, std::memory_order_seq_cst);
        emplacementEcrivain_ = -1;
        Verrou(fd_, F_UNLCK, OctetEcrivains, false);
        return e;
    };
    const int32_t pid = static_cast<int32_t>(::getpid());
    for (int essai = 0; essai < 2 && emplacementEcrivain_ < 0; ++essai) {
        for (int i = 0; i < EmplacementsEcrivains; ++i) {
            int32_t libre = 0;
            if (zone_->ecrivains[i].compare_exchange_strong(libre, pid, std::memory_order_seq_cst)) {
                emplacementEcrivain_ = i;
                break;
            }
        }
        // All words taken: if we alone hold byte 0, they are left by the dead.
        if (emplacementEcrivain_ < 0 && !EcrivainVivant())
            for (auto& e : zone_->ecrivains) e.store(0, std::memory_order_seq_cst);
    }
    if (emplacementEcrivain_ < 0) return renonce(Entree::TenuAilleurs);
    if (LecteurActifAilleurs()) return renonce(Entree::TenuAilleurs);
    ecrivainsIci_ = 1;
    exclusifIci_ = exclusif;
    return Entree::Ok;
}

void PartageFichier::SortEcrivain() {
    if (ecrivainsIci_ == 0 || --ecrivainsIci_ > 0) return;
    // The word goes first: a word without the lock would be taken for a dead writer's.
    if (emplacementEcrivain_ >= 0) zone_->ecrivains[emplacementEcrivain_].store(0, std::memory_order_seq_cst);
    emplacementEcrivain_ = -1;
    exclusifIci_ = false;
    Verrou(fd_, F_UNLCK, OctetEcrivains, false);
}

uint32_t PartageFichier::Generation() const { return zone_->generation.load(std::memory_order_acquire); }

void PartageFichier::MarqueRemplace() { zone_->generation.fetch_add(1, std::memory_order_acq_rel); }

bool PartageFichier::VerrouilleTransaction() { return Verrou(fd_, F_WRLCK, OctetTransaction, true); }

void PartageFichier::DeverrouilleTransaction() { Verrou(fd_, F_UNLCK, OctetTransaction, false); }

void MarqueRemplaceChemin(const char* chemin) {
    struct stat st {};
    if (::stat(chemin, &st) != 0) return;
    if (auto p = registre->parIdentite[{st.st_dev, st.st_ino}].lock()) {
        p->MarqueRemplace();
        return;
    }
    // Nobody in this process has seen it; without a record nobody anywhere has.
    const int fd = ::open(NomRecord(st.st_dev, st.st_ino).c_str(), O_RDWR | O_CLOEXEC);
    if (fd < 0) return;
    struct stat sr {};
    if (::fstat(fd, &sr) == 0 && sr.st_size >= static_cast<off_t>(TailleZone)) {
        if (PartageFichier::Zone* zone = Projette(fd)) {
            zone->generation.fetch_add(1, std::memory_order_acq_rel);
            ::munmap(zone, TailleZone);
        }
    }
    ::close(fd);
}

void FixeDossierPartage(std::string dossier) {
    registre->dossier = std::move(dossier);
    registre->parIdentite.clear();
    registre->balaye = false;
}

void PartageFichier::Abandonne() {
    ::munmap(zone_, TailleZone);
    ::close(fd_);
    fd_ = -1;
    zone_ = nullptr;
}

void AbandonnePartages() {
    for (auto& [identite, faible] : registre->parIdentite)
        if (auto p = faible.lock()) p->Abandonne();
    Registre* parent = registre;
    registre = new Registre;
    registre->dossier = std::move(parent->dossier);
    registre->balaye = parent->balaye;
}

}  // namespace vdx::magasin
