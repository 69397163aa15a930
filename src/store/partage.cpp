#include "store/partage.h"

#include <cerrno>
#include <map>
#include <utility>

#include "platform/chemin.h"

namespace vdx::magasin {

namespace {

constexpr int EmplacementsEcrivains = 8;
constexpr int EmplacementsLecteurs = 500;
constexpr int OctetEcrivains = 0;
constexpr int OctetTransaction = 1;
constexpr int PremierOctetLecteur = 64;
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

// A fresh record is all zeros, which is a valid empty one: no set-up race.
struct Registre {
    std::map<systeme::IdentiteFichier, std::weak_ptr<PartageFichier>> parIdentite;
};

Registre* registre = new Registre;  // left to the process; a forked child drops it

}  // namespace

std::shared_ptr<PartageFichier> PartageFichier::Pour(const systeme::IdentiteFichier& identite, const char* chemin) {
    auto& cache = registre->parIdentite[identite];
    if (auto p = cache.lock()) return p;
    std::unique_ptr<systeme::RecordPartage> record = systeme::RecordPartage::Ouvre(identite, chemin, TailleZone);
    if (!record) return nullptr;
    std::shared_ptr<PartageFichier> p(new PartageFichier(std::move(record)));
    cache = p;
    return p;
}

PartageFichier::PartageFichier(std::unique_ptr<systeme::RecordPartage> record)
    : record_(std::move(record)), zone_(static_cast<Zone*>(record_->Zone())) {}

PartageFichier::~PartageFichier() = default;  // the record's end releases our locks

bool PartageFichier::PrendEmplacementLecteur() {
    for (int i = 0; i < EmplacementsLecteurs; ++i) {
        // The slot's lock decides who owns it: a dead owner's lock is gone.
        if (record_->Verrouille(PremierOctetLecteur + i, true, false)) {
            zone_->lecteurs[i].actif.store(0, std::memory_order_seq_cst);
            zone_->lecteurs[i].pid.store(static_cast<int32_t>(chemin::NumeroProcessus()), std::memory_order_relaxed);
            emplacementLecteur_ = i;
            return true;
        }
    }
    errno = ENOSPC;  // every reader slot taken
    return false;
}

bool PartageFichier::EcrivainVivant() const { return record_->TenuParAutre(OctetEcrivains); }

bool PartageFichier::LecteurActifAilleurs() const {
    for (int i = 0; i < EmplacementsLecteurs; ++i) {
        if (i == emplacementLecteur_) continue;
        if (zone_->lecteurs[i].actif.load(std::memory_order_seq_cst) == 0) continue;
        if (record_->TenuParAutre(PremierOctetLecteur + i)) return true;
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
    if (!record_->Verrouille(OctetEcrivains, exclusif, false))
        return errno == EAGAIN ? Entree::TenuAilleurs : Entree::Impossible;
    auto renonce = [&](Entree e) {
        if (emplacementEcrivain_ >= 0) zone_->ecrivains[emplacementEcrivain_].store(0, std::memory_order_seq_cst);
        emplacementEcrivain_ = -1;
        record_->Deverrouille(OctetEcrivains);
        return e;
    };
    const int32_t pid = static_cast<int32_t>(chemin::NumeroProcessus());
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
    record_->Deverrouille(OctetEcrivains);
}

uint32_t PartageFichier::Generation() const { return zone_->generation.load(std::memory_order_acquire); }

void PartageFichier::MarqueRemplace() { zone_->generation.fetch_add(1, std::memory_order_acq_rel); }

bool PartageFichier::VerrouilleTransaction() { return record_->Verrouille(OctetTransaction, true, true); }

void PartageFichier::DeverrouilleTransaction() { record_->Deverrouille(OctetTransaction); }

void MarqueRemplaceChemin(const char* chemin) {
    systeme::EtatFichier etat;
    if (!systeme::DecritChemin(chemin, etat)) return;
    if (auto p = registre->parIdentite[etat.identite].lock()) {
        p->MarqueRemplace();
        return;
    }
    // Nobody in this process has seen it; without a record nobody anywhere has.
    if (auto record = systeme::RecordPartage::OuvreExistant(etat.identite, chemin, TailleZone))
        static_cast<PartageFichier::Zone*>(record->Zone())->generation.fetch_add(1, std::memory_order_acq_rel);
}

void FixeDossierPartage(std::string dossier) {
    systeme::FixeDossierPartage(std::move(dossier));
    registre->parIdentite.clear();
}

void PartageFichier::Abandonne() {
    record_->Abandonne();
    zone_ = nullptr;
}

void AbandonnePartages() {
    for (auto& [identite, faible] : registre->parIdentite)
        if (auto p = faible.lock()) p->Abandonne();
    registre = new Registre;
}

}  // namespace vdx::magasin
