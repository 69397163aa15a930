#include "store/fichier.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <type_traits>

#include "platform/chemin.h"
#include "platform/horloge.h"

namespace vdx::magasin {

// The environments opened by this process, counted.
static uint64_t& Instances() {
    static uint64_t n = 0;
    return n;
}


namespace {

constexpr char Magie[8] = {'V', 'D', 'X', '3', '2', 'T', 'F', '\0'};
constexpr uint32_t Version = 1;
constexpr char CleEntete[] = "VDX32";
// Where maps may pass the file's end: address space the file grows into,
// which costs no memory.
constexpr uint64_t Reserve = uint64_t{4} << 30;
constexpr uint64_t Mo = uint64_t{1} << 20;
constexpr int64_t IntervalleControle = 1'000'000'000;  // ns between two stats of an idle file

Statut Etranger() { return {OuvertureImpossible, FichierEtranger}; }

int16_t Detail(int e) { return static_cast<int16_t>(e); }

std::string NomCle(int k) { return "cle" + std::to_string(k + 1); }

// The bytes of the pages the file holds, as its last commit says.
uint64_t PagesUtilisees(MDB_env* env) {
    MDB_envinfo info{};
    MDB_stat ms{};
    mdb_env_info(env, &info);
    mdb_env_stat(env, &ms);
    return (static_cast<uint64_t>(info.me_last_pgno) + 1) * ms.ms_psize;
}

uint64_t CarteDe(MDB_env* env) {
    MDB_envinfo info{};
    mdb_env_info(env, &info);
    return info.me_mapsize;
}

// Whether a file of `taille` bytes holds every page its last commit names:
// a truncated file would fault when its missing pages are read.
bool Entier(MDB_env* env, uint64_t taille) {
    MDB_stat ms{};
    mdb_env_stat(env, &ms);
    return ms.ms_psize != 0 && PagesUtilisees(env) <= taille;
}

// Room a bounded writer keeps above twice its pages (a transaction may copy
// each once) for the data of a transaction and the pages that file it.
constexpr uint64_t MargeEcriture = 4 * OctetsParTransaction;

// The map of a reader whose file has `taille` bytes, or of a writer whose
// file uses `utilise` bytes out of `taille`. A bounded writer maps its pages
// twice over and twice its room, in whole megabytes, and never less than the
// file: its map sets the file's length, which others may map.
size_t TailleCarte(uint64_t utilise, uint64_t taille, bool ecriture) {
    if (!Bornees()) return static_cast<size_t>(std::min<uint64_t>(Reserve, SIZE_MAX));
    if (!ecriture) return static_cast<size_t>(taille);
    const uint64_t voulu = (2 * utilise + 2 * MargeEcriture + Mo - 1) / Mo * Mo;
    return static_cast<size_t>(std::max(voulu, taille));
}

// An environment on the file at `chemin`, without lock file, with the flags
// of its use and a map of `carte` bytes; on failure it is closed again
// (null) and LMDB's code returned.
int OuvreEnv(const std::string& chemin, unsigned drapeaux, size_t carte, MDB_env*& env) {
    env = nullptr;
    int rc = mdb_env_create(&env);
    if (!rc) rc = mdb_env_set_maxdbs(env, MaxCles + 2);
    if (!rc) rc = mdb_env_set_mapsize(env, carte);
    if (!rc) rc = mdb_env_open(env, chemin.c_str(), MDB_NOSUBDIR | MDB_NOLOCK | drapeaux, 0666);
    if (rc) {
        mdb_env_close(env);
        env = nullptr;
    }
    return rc;
}

// A descriptor (Linux) or a HANDLE (Windows) as an integer.
template <class Descripteur>
intptr_t EnEntier(Descripteur d) {
    if constexpr (std::is_pointer_v<Descripteur>) return reinterpret_cast<intptr_t>(d);
    else return static_cast<intptr_t>(d);
}

// The file under an environment, as LMDB holds it open.
bool DecritEnvironnement(MDB_env* env, systeme::EtatFichier& etat) {
    mdb_filehandle_t descripteur{};
    return mdb_env_get_fd(env, &descripteur) == 0 && systeme::DecritOuvert(EnEntier(descripteur), etat);
}

// Closes an environment; a bounded writer's file is cut back to its pages,
// through a handle of its own (the path may name another file by then) and
// under the transaction lock of its sharing, if it has one yet, so that no
// other writer has pages in flight past them. Where another process maps
// the file the system may refuse, and the room stays.
void FermeEnv(MDB_env* env, bool ecriture, PartageFichier* partage) {
    mdb_filehandle_t descripteur{};
    const bool couper = Bornees() && ecriture && mdb_env_get_fd(env, &descripteur) == 0 &&
                        (!partage || partage->VerrouilleTransaction());
    const intptr_t copie = couper ? systeme::Duplique(EnEntier(descripteur)) : -1;
    const uint64_t utilise = couper ? PagesUtilisees(env) : 0;
    mdb_env_close(env);
    if (copie != -1) systeme::FixeTailleEtFerme(copie, utilise);
    if (couper && partage) partage->DeverrouilleTransaction();
}

MDB_val Val(const void* p, size_t n) { return MDB_val{n, const_cast<void*>(p)}; }

}  // namespace

Statut DeLmdb(int rc, Erreur defaut) {
    switch (rc) {
        case 0: return {};
        case MDB_KEYEXIST: return {CleExistante, 0};
        case ENOMEM: return {MemoireEpuisee, Detail(rc)};
        case MDB_CORRUPTED:
        case MDB_PAGE_NOTFOUND:
        case MDB_INVALID:
        case MDB_VERSION_MISMATCH:
        case MDB_INCOMPATIBLE: return {FichierCorrompu, Detail(rc)};
        default: return {defaut, Detail(rc)};  // LMDB's own codes fit in 16 bits
    }
}

Entete EnteteDonnees(uint32_t longueurFiche, bool variable) {
    Entete e{};
    std::memcpy(e.magie, Magie, sizeof Magie);
    e.version = Version;
    e.genre = GenreFichier::Donnees;
    e.longueurFiche = longueurFiche;
    e.variable = variable ? 1 : 0;
    e.prochaine = 1;
    return e;
}

Entete EnteteIndex(const std::vector<uint32_t>& longueursCles) {
    Entete e{};
    std::memcpy(e.magie, Magie, sizeof Magie);
    e.version = Version;
    e.genre = GenreFichier::Index;
    e.nombreCles = static_cast<uint32_t>(longueursCles.size());
    for (size_t k = 0; k < longueursCles.size() && k < MaxCles; ++k) e.longueursCles[k] = longueursCles[k];
    return e;
}

Fichier::Fichier(std::string c, MDB_env* e, bool ro)
    : chemin(std::move(c)), env(e), lectureSeule(ro), instance(++Instances()) {}

Fichier::~Fichier() {
    if (ecriture) FinEcriture(true);
    if (sansCarte) {
        mdb_env_close(env);  // no page of it may be read, nor the file cut
        return;
    }
    for (Instantane& l : lectures_) {
        // Cursors of read transactions outlive them: they are ours to close.
        for (MDB_cursor* c : l.curseurs)
            if (c) mdb_cursor_close(c);
        mdb_txn_abort(l.txn);
    }
    FermeEnv(env, !lectureSeule, partage.get());
}

Statut Fichier::LitEntete() {
    MDB_txn* txn = nullptr;
    int rc = mdb_txn_begin(env, nullptr, MDB_RDONLY, &txn);
    if (rc) return {OuvertureImpossible, Detail(rc)};
    Statut st = Etranger();
    MDB_dbi principale;
    MDB_val cle = Val(CleEntete, sizeof CleEntete - 1), valeur;
    Entete e;
    if (mdb_dbi_open(txn, nullptr, 0, &principale) == 0 && mdb_get(txn, principale, &cle, &valeur) == 0 &&
        valeur.mv_size == sizeof(Entete)) {
        std::memcpy(&e, valeur.mv_data, sizeof e);
        const bool sain = std::memcmp(e.magie, Magie, sizeof Magie) == 0 && e.version == Version;
        if (sain && e.genre == GenreFichier::Donnees) {
            if (mdb_dbi_open(txn, "fiches", MDB_INTEGERKEY, &fiches) == 0 &&
                mdb_dbi_open(txn, "libres", MDB_INTEGERKEY, &libres) == 0)
                st = {};
        } else if (sain && e.genre == GenreFichier::Index && e.nombreCles >= 1 && e.nombreCles <= MaxCles) {
            st = {};
            for (uint32_t k = 0; k < e.nombreCles && st; ++k)
                if (e.longueursCles[k] == 0 || e.longueursCles[k] > LongueurCleMax ||
                    mdb_dbi_open(txn, NomCle(static_cast<int>(k)).c_str(), 0, &cles[k]) != 0)
                    st = Etranger();
        }
    }
    if (!st) {
        mdb_txn_abort(txn);
        return st;
    }
    txnEntete = mdb_txn_id(txn);
    entete = e;
    // Committing keeps the database handles in the environment.
    rc = mdb_txn_commit(txn);
    return rc ? Statut{OuvertureImpossible, Detail(rc)} : Statut{};
}

bool& Synchronisation() {
    static bool oui = true;
    return oui;
}

bool& Bornees() {
    static bool oui = systeme::CarteBorneeAuFichier;
    return oui;
}

int Fichier::AgranditCarte() {
    if (!Bornees() || lectureSeule || liaisons > ecrivains) return 0;
    const uint64_t utilise = PagesUtilisees(env);
    systeme::EtatFichier etat;
    if (CarteDe(env) >= 2 * utilise + MargeEcriture || !DecritEnvironnement(env, etat)) return 0;
    const int rc = mdb_env_set_mapsize(env, TailleCarte(utilise, etat.taille, true));
    sansCarte = rc != 0;  // the old map is gone too
    return rc;
}

Instantane Fichier::PrendLecture(Statut& statut) {
    Instantane l;
    if (sansCarte) {
        statut = {OuvertureImpossible, Detail(ENOMEM)};
        return l;
    }
    if (!lectures_.empty()) {
        l = std::move(lectures_.back());
        lectures_.pop_back();
    }
    auto commence = [&] { return l.txn ? mdb_txn_renew(l.txn) : mdb_txn_begin(env, nullptr, MDB_RDONLY, &l.txn); };
    if (const int rc = commence()) {
        statut = DeLmdb(rc, OuvertureImpossible);
        for (MDB_cursor* c : l.curseurs)
            if (c) mdb_cursor_close(c);
        if (l.txn) mdb_txn_abort(l.txn);
        return {};
    }
    return l;
}

void Fichier::RendLecture(Instantane&& l) {
    if (!l.txn) return;
    mdb_txn_reset(l.txn);
    lectures_.push_back(std::move(l));
}

Statut Fichier::DebutEcriture(bool partageEntreProcessus) {
    if (ecriture) return {};
    if (lectureSeule) return {Ecriture, Detail(EROFS)};
    if (partageEntreProcessus) {
        if (!partage->VerrouilleTransaction()) return {Ecriture, Detail(errno)};
        verrouTransaction_ = true;
    }
    int rc = sansCarte ? ENOMEM : AgranditCarte();
    if (!rc) rc = mdb_txn_begin(env, nullptr, 0, &ecriture);
    if (rc) {
        ecriture = nullptr;
        if (verrouTransaction_) partage->DeverrouilleTransaction();
        verrouTransaction_ = false;
        return DeLmdb(rc, Ecriture);
    }
    ++numeroTxn;
    ++serie;
    return {};
}

Statut Fichier::FinEcriture(bool valider) {
    if (!ecriture) return {};
    int rc = 0;
    // A failed commit frees the transaction too.
    if (valider) rc = mdb_txn_commit(ecriture);
    else mdb_txn_abort(ecriture);
    ecriture = nullptr;
    operations = 0;
    octets = 0;
    ++serie;
    if (verrouTransaction_) partage->DeverrouilleTransaction();
    verrouTransaction_ = false;
    return DeLmdb(rc, Ecriture);
}

namespace {

// Opens the environment of the file at `chemin` and checks that it is a
// table file of this store, without touching any page the file lacks.
std::shared_ptr<Fichier> OuvreEnvironnement(const std::string& chemin, bool ecriture, Statut& statut) {
    for (int essai = 0; essai < 3; ++essai) {
        systeme::EtatFichier avant;
        if (!systeme::DecritChemin(chemin.c_str(), avant)) {
            statut = {OuvertureImpossible, Detail(errno)};
            return nullptr;
        }
        // LMDB would make a new database of an empty file opened for writing.
        if (!avant.regulier || avant.taille == 0) {
            statut = Etranger();
            return nullptr;
        }
        auto partage = PartageFichier::Pour(avant.identite, chemin.c_str());
        if (!partage) {
            statut = {OuvertureImpossible, Detail(errno)};
            return nullptr;
        }
        // Read before the file is opened: a replacement after this is seen.
        const uint32_t generation = partage->Generation();
        auto echec = [&statut](int rc) -> std::shared_ptr<Fichier> {
            statut = rc == MDB_INVALID || rc == MDB_VERSION_MISMATCH || rc == MDB_CORRUPTED
                         ? Etranger()
                         : Statut{OuvertureImpossible, Detail(rc)};
            return nullptr;
        };
        const size_t carteLecture = TailleCarte(0, avant.taille, false);
        MDB_env* env = nullptr;
        uint64_t utilise = 0;
        if (ecriture && Bornees()) {
            // A bounded writer's map lengthens the file: a reader checks it first.
            if (const int rc = OuvreEnv(chemin, MDB_RDONLY, carteLecture, env)) return echec(rc);
            systeme::EtatFichier lu;
            const bool memeFichier = DecritEnvironnement(env, lu) && lu.identite == avant.identite;
            const bool entier = memeFichier && Entier(env, lu.taille);
            utilise = PagesUtilisees(env);
            mdb_env_close(env);
            if (!memeFichier) continue;
            if (!entier) {
                statut = Etranger();
                return nullptr;
            }
        }
        const size_t carte = ecriture ? TailleCarte(utilise, avant.taille, true) : carteLecture;
        if (const int rc = OuvreEnv(chemin, ecriture ? MDB_NOSYNC : MDB_RDONLY, carte, env)) return echec(rc);
        auto f = std::make_shared<Fichier>(chemin, env, !ecriture);
        systeme::EtatFichier ouvert;
        if (!DecritEnvironnement(env, ouvert)) {
            statut = {OuvertureImpossible, Detail(errno)};
            return nullptr;
        }
        if (ouvert.identite != avant.identite) continue;  // replaced meanwhile
        if (!Entier(env, ouvert.taille)) {
            statut = Etranger();
            return nullptr;
        }
        f->identite = ouvert.identite;
        f->partage = std::move(partage);
        f->generation = generation;
        f->prochainControle = horloge::MaintenantGrossier() + IntervalleControle;
        if (!(statut = f->LitEntete())) return nullptr;
        return f;
    }
    statut = {OuvertureImpossible, Detail(EAGAIN)};
    return nullptr;
}

}  // namespace

std::shared_ptr<Fichier> Fichiers::Ouvre(std::string_view chemin, bool ecriture, Statut& statut) {
    auto it = parChemin_.find(chemin);
    if (it != parChemin_.end()) {
        Fichier& f = *it->second;
        if (f.liaisons > 0) return it->second;  // in use here: it is the file our bindings see
        bool reprendre = (ecriture && f.lectureSeule) || f.sansCarte;
        const uint32_t generation = f.partage->Generation();
        const int64_t maintenant = horloge::MaintenantGrossier();
        if (!reprendre && (generation != f.generation || maintenant >= f.prochainControle)) {
            systeme::EtatFichier etat;
            reprendre = !systeme::DecritChemin(f.chemin.c_str(), etat) || etat.identite != f.identite;
            f.generation = generation;
            f.prochainControle = maintenant + IntervalleControle;
        }
        if (!reprendre) {
            // Members added by a writer since the header was read.
            MDB_envinfo info{};
            mdb_env_info(f.env, &info);
            if (info.me_last_txnid != f.txnEntete && !(statut = f.LitEntete())) reprendre = true;
        }
        if (!reprendre) return it->second;
        parChemin_.erase(it);
    }
    std::string c(chemin);
    auto f = OuvreEnvironnement(c, ecriture, statut);
    if (f) parChemin_.emplace(std::move(c), f);
    return f;
}

std::shared_ptr<Fichier> Fichiers::Cree(const std::string& chemin, const Entete& entete, bool exclusif,
                                        Statut& statut) {
    auto it = parChemin_.find(chemin);
    if (it != parChemin_.end()) {
        if (it->second->liaisons > 0) {
            statut = {Creation, TenuParCeProcessus};
            return nullptr;
        }
        parChemin_.erase(it);
    }
    // Built aside, then renamed in place: a reader sees the old file or the whole new one.
    const std::string provisoire = chemin + ".vdx32-" + std::to_string(vdx::chemin::NumeroProcessus());
    std::error_code ignore;
    std::filesystem::remove(provisoire, ignore);
    auto echec = [&](Statut s, MDB_env* env) -> std::shared_ptr<Fichier> {
        if (env) mdb_env_close(env);
        std::filesystem::remove(provisoire, ignore);
        statut = s;
        return nullptr;
    };
    MDB_env* env = nullptr;
    int rc = OuvreEnv(provisoire, MDB_NOSYNC, TailleCarte(0, 0, true), env);
    if (rc) return echec({Creation, Detail(rc)}, nullptr);

    MDB_txn* txn = nullptr;
    MDB_dbi principale, dbi;
    rc = mdb_txn_begin(env, nullptr, 0, &txn);
    if (!rc) rc = mdb_dbi_open(txn, nullptr, 0, &principale);
    MDB_val cle = Val(CleEntete, sizeof CleEntete - 1), valeur = Val(&entete, sizeof entete);
    if (!rc) rc = mdb_put(txn, principale, &cle, &valeur, 0);
    if (entete.genre == GenreFichier::Donnees) {
        if (!rc) rc = mdb_dbi_open(txn, "fiches", MDB_CREATE | MDB_INTEGERKEY, &dbi);
        if (!rc) rc = mdb_dbi_open(txn, "libres", MDB_CREATE | MDB_INTEGERKEY, &dbi);
    } else {
        for (uint32_t k = 0; k < entete.nombreCles && !rc; ++k)
            rc = mdb_dbi_open(txn, NomCle(static_cast<int>(k)).c_str(), MDB_CREATE, &dbi);
    }
    if (rc) {
        if (txn) mdb_txn_abort(txn);
        return echec({Creation, Detail(rc)}, env);
    }
    rc = mdb_txn_commit(txn);
    if (!rc && Synchronisation()) rc = mdb_env_sync(env, 1);
    if (rc) return echec({Creation, Detail(rc)}, env);
    // Closed while it is renamed: Windows renames no file that is held open.
    FermeEnv(env, true, nullptr);

    systeme::EtatFichier etat;
    if (!systeme::DecritChemin(provisoire.c_str(), etat)) return echec({Creation, Detail(errno)}, nullptr);
    std::shared_ptr<PartageFichier> partage = PartageFichier::Pour(etat.identite, provisoire.c_str());
    if (!partage) return echec({Creation, Detail(errno)}, nullptr);
    // Entered before it has its name, so that nobody reads it half-made.
    if (partage->EntreEcrivain(exclusif) != Entree::Ok) return echec({Creation, TenuAilleurs}, nullptr);
    MarqueRemplaceChemin(chemin.c_str());
    std::error_code renomme;
    std::filesystem::rename(provisoire, chemin, renomme);
    if (renomme) {
        partage->SortEcrivain();
        return echec({Creation, Detail(renomme.value())}, nullptr);
    }

    if ((rc = OuvreEnv(chemin, MDB_NOSYNC, TailleCarte(etat.taille, etat.taille, true), env))) {
        partage->SortEcrivain();
        statut = {Creation, Detail(rc)};
        return nullptr;
    }
    auto f = std::make_shared<Fichier>(chemin, env, false);
    systeme::EtatFichier ouvert;
    if (!DecritEnvironnement(env, ouvert) || ouvert.identite != etat.identite) {
        partage->SortEcrivain();
        statut = {Creation, TenuAilleurs};  // replaced as it was renamed
        return nullptr;
    }
    f->identite = ouvert.identite;
    f->partage = std::move(partage);
    f->generation = f->partage->Generation();
    f->prochainControle = horloge::MaintenantGrossier() + IntervalleControle;
    if (!(statut = f->LitEntete())) {
        f->partage->SortEcrivain();
        return nullptr;
    }
    parChemin_.emplace(chemin, f);
    return f;
}

void Fichiers::OteInactifs() {
    std::erase_if(parChemin_, [](const auto& e) { return e.second->liaisons == 0; });
}

void Fichiers::Vide() { parChemin_.clear(); }

void Fichiers::Ferme(const Fichier& f) {
    if (auto it = parChemin_.find(f.chemin); it != parChemin_.end() && it->second.get() == &f) parChemin_.erase(it);
}

}  // namespace vdx::magasin
