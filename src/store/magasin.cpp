#include "store/magasin.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include "store/fichier.h"
#include "store/partage.h"

namespace vdx::magasin {

namespace {

constexpr int NumerosMax = 1024;
constexpr int OperationsParTransaction = 10000;

enum class Acces : uint8_t { Lecture, Exclusif, Partage };

Acces AccesDuMode(int mode) {
    if (mode & LectureSeule) return Acces::Lecture;
    return (mode & Mode::Partage) ? Acces::Partage : Acces::Exclusif;
}

// The current key of a key number. Sur: on `cle`. Avant: in the gap just
// before `cle`, which is absent (the next key is the first one at or above
// it). Debut and Fin: before the first and after the last key.
struct CleCourante {
    enum class Etat : uint8_t { Aucune, Sur, Avant, Debut, Fin } etat = Etat::Aucune;
    std::string cle;
    uint64_t serie = 0;  // the cursor stands on this place while the series holds
};

struct Liaison {
    std::shared_ptr<Fichier> fichier;
    Acces acces = Acces::Lecture;
    Instantane lecture;  // read-only: the snapshot held from open to close
    uint64_t serie = 0;  // read-only: identifies this binding's snapshot
    std::vector<CleCourante> cles;

    bool Liee() const { return fichier != nullptr; }
    // Saved places stay good while this holds.
    uint64_t SeriePlaces() const { return acces == Acces::Lecture ? serie : fichier->serie; }
};

// What a file or key number stands for.
struct Numero {
    int liaison = -1;  // number the binding was opened on
    int cle = -1;      // key of the index, -1 for a data file
};

struct Etat {
    int limite = 0;
    std::vector<Numero> numeros;
    std::vector<Liaison> liaisons;  // by the number opened; kept to reuse their buffers
    Fichiers fichiers;
    uint64_t serie = 0;
};

Etat* etat = new Etat;  // left to the process; a forked child drops it
Globales globales{};

// In a forked child the parent's environments and locks must not be used.
void ApresFork() {
    etat = new Etat;
    AbandonnePartages();
    globales = {};
}

[[maybe_unused]] const bool atfork = (systeme::ApresFork(ApresFork), true);

int Fin(Statut s) {
    globales.ErreurMagasin = s.erreur;
    globales.EtatIOMagasin = s.io;
    return s.erreur;
}

Position Fin(Position p, Statut s) {
    Fin(s);
    return p;
}

bool Libre(int numero) {
    return numero >= 0 && numero < etat->limite && etat->numeros[numero].liaison < 0;
}

Liaison* LiaisonDonnees(int numero) {
    if (numero < 0 || numero >= etat->limite) return nullptr;
    const Numero& n = etat->numeros[numero];
    if (n.liaison < 0 || n.cle >= 0) return nullptr;
    return &etat->liaisons[n.liaison];
}

Liaison* LiaisonCle(int numero, int& cle) {
    if (numero < 0 || numero >= etat->limite) return nullptr;
    const Numero& n = etat->numeros[numero];
    if (n.liaison < 0 || n.cle < 0) return nullptr;
    cle = n.cle;
    return &etat->liaisons[n.liaison];
}

Liaison* Ecrivain(Liaison* l, Statut& st) {
    if (l && l->acces == Acces::Lecture) {
        st = {Ecriture, static_cast<int16_t>(EROFS)};
        return nullptr;
    }
    if (!l) st = {NumeroInvalide, 0};
    return l;
}

// .DAT and .NDX say what the file must be; other names take it as it is.
bool GenreConforme(std::string_view chemin, const Fichier& f) {
    if (chemin.size() < 4) return true;
    const char* ext = chemin.data() + chemin.size() - 4;
    auto est = [ext](const char* minuscules) {
        for (int i = 0; i < 4; ++i)
            if (std::tolower(static_cast<unsigned char>(ext[i])) != minuscules[i]) return false;
        return true;
    };
    if (est(".dat")) return f.Donnees();
    if (est(".ndx")) return !f.Donnees();
    return true;
}

// Makes `l` a binding of `f`: enters the file's sharing (unless `entre`)
// and, read-only, takes a snapshot.
Statut Attache(Liaison& l, std::shared_ptr<Fichier> f, Acces acces, bool entre) {
    if (!entre) {
        const Entree e = acces == Acces::Lecture ? f->partage->EntreLecteur()
                                                 : f->partage->EntreEcrivain(acces == Acces::Exclusif);
        switch (e) {
            case Entree::Ok: break;
            case Entree::TenuAilleurs: return {OuvertureImpossible, TenuAilleurs};
            case Entree::TenuIci: return {OuvertureImpossible, TenuParCeProcessus};
            case Entree::Impossible: return {OuvertureImpossible, static_cast<int16_t>(errno)};
        }
    }
    if (acces == Acces::Lecture) {
        Statut st;
        l.lecture = f->PrendLecture(st);
        if (!st) {
            f->partage->SortLecteur();
            return st;
        }
        l.serie = ++etat->serie;
    } else {
        ++f->ecrivains;
    }
    ++f->liaisons;
    l.acces = acces;
    l.cles.resize(f->Donnees() ? 0 : f->entete.nombreCles);
    for (CleCourante& c : l.cles) c.etat = CleCourante::Etat::Aucune;
    l.fichier = std::move(f);
    return {};
}

// Ends a binding: the last writer of the file commits and syncs.
Statut Detache(Liaison& l) {
    Fichier& f = *l.fichier;
    Statut st;
    if (l.acces == Acces::Lecture) {
        f.RendLecture(std::move(l.lecture));
        l.lecture = {};
        f.partage->SortLecteur();
    } else {
        if (--f.ecrivains == 0) {
            st = f.FinEcriture(true);
            if (const int rc = Synchronisation() ? mdb_env_sync(f.env, 1) : 0; rc && st)
                st = {Ecriture, static_cast<int16_t>(rc)};
        }
        f.partage->SortEcrivain();
    }
    --f.liaisons;
    // A bounded writer's file is cut back to its pages once closed: not kept.
    if (Bornees() && !f.lectureSeule && f.liaisons == 0) etat->fichiers.Ferme(f);
    l.fichier.reset();
    return st;
}

void Lie(int numero, int cles) {
    for (int k = 0; k < std::max(cles, 1); ++k) etat->numeros[numero + k] = {numero, cles ? k : -1};
}

Statut Delie(int numero) {
    Liaison& l = etat->liaisons[numero];
    const int cles = static_cast<int>(l.cles.size());
    for (int k = 0; k < std::max(cles, 1); ++k) etat->numeros[numero + k] = {};
    return Detache(l);
}

// Binds `numero` (and the keys behind an index) to `f`.
Statut OuvreSur(int numero, std::string_view chemin, std::shared_ptr<Fichier> f, Acces acces, bool entre) {
    if (!GenreConforme(chemin, *f)) {
        if (entre) f->partage->SortEcrivain();
        return {OuvertureImpossible, FichierEtranger};
    }
    const int cles = f->Donnees() ? 0 : static_cast<int>(f->entete.nombreCles);
    for (int k = 1; k < cles; ++k)
        if (!Libre(numero + k)) {
            if (entre) f->partage->SortEcrivain();
            return {NumeroInvalide, 0};
        }
    if (Statut st = Attache(etat->liaisons[numero], std::move(f), acces, entre); !st) return st;
    Lie(numero, cles);
    return {};
}

// The transaction an operation of `l` runs in: the binding's snapshot, or
// the file's write transaction.
MDB_txn* Debut(Liaison& l, Statut& st) {
    if (l.acces == Acces::Lecture) return l.lecture.txn;
    st = l.fichier->DebutEcriture(l.acces == Acces::Partage);
    return st ? l.fichier->ecriture : nullptr;
}

// After an operation: a shared writer commits at once; an exclusive one
// every so many writes, and at any failure so that what was written before
// it stays even if the caller never closes.
Statut Termine(Liaison& l, Statut resultat, bool ecrit) {
    if (l.acces == Acces::Lecture) return resultat;
    Fichier& f = *l.fichier;
    if (ecrit) {
        ++f.serie;
        ++f.operations;
    }
    if (l.acces == Acces::Partage || !resultat || f.operations >= OperationsParTransaction ||
        f.octets >= OctetsParTransaction) {
        const Statut c = f.FinEcriture(true);
        if (resultat) resultat = c;
    }
    return resultat;
}

MDB_val Val(const void* p, size_t n) { return MDB_val{n, const_cast<void*>(p)}; }

Position PositionDe(const MDB_val& v) {
    Position p = 0;
    if (v.mv_size == sizeof p) std::memcpy(&p, v.mv_data, sizeof p);
    return p;
}

// --- Keys ---------------------------------------------------------------

enum class Mouvement { Premiere, Derniere, Suivante, Precedente, Egale, SuperieureOuEgale };

// A cursor of key `k` usable in `txn`.
Statut Curseur(Liaison& l, int k, MDB_txn* txn, MDB_cursor*& c) {
    Fichier& f = *l.fichier;
    int rc = 0;
    if (l.acces == Acces::Lecture) {
        // Kept with the snapshot, renewed once per binding.
        MDB_cursor*& garde = l.lecture.curseurs[k];
        if (!garde) rc = mdb_cursor_open(txn, f.cles[k], &garde);
        else if (l.lecture.renouveles[k] != l.serie) rc = mdb_cursor_renew(txn, garde);
        if (!rc) l.lecture.renouveles[k] = l.serie;
        c = garde;
    } else {
        // Cursors of a write transaction end with it.
        if (f.txnCurseurs[k] != f.numeroTxn || !f.curseursEcriture[k]) {
            rc = mdb_cursor_open(txn, f.cles[k], &f.curseursEcriture[k]);
            f.txnCurseurs[k] = f.numeroTxn;
        }
        c = f.curseursEcriture[k];
    }
    return DeLmdb(rc, Lecture);
}

bool Egaux(const MDB_val& v, const std::string& s) {
    return v.mv_size == s.size() && std::memcmp(v.mv_data, s.data(), s.size()) == 0;
}

// Moves key `k` of `l` and gives the position found, 0 for none.
Statut Deplace(Liaison& l, int k, MDB_txn* txn, Mouvement m, const void* cle, void* tampon, Position& p) {
    using E = CleCourante::Etat;
    CleCourante& cc = l.cles[k];
    const size_t longueur = l.fichier->entete.longueursCles[k];
    MDB_cursor* c = nullptr;
    if (Statut st = Curseur(l, k, txn, c); !st) return st;
    MDB_val kv{}, dv{};
    int rc = 0;
    // A writer's saved place is found again from its key.
    if ((cc.etat == E::Sur || cc.etat == E::Avant) && cc.serie != l.SeriePlaces() &&
        (m == Mouvement::Suivante || m == Mouvement::Precedente)) {
        kv = Val(cc.cle.data(), cc.cle.size());
        rc = mdb_cursor_get(c, &kv, &dv, MDB_SET_RANGE);
        if (rc == MDB_NOTFOUND) cc.etat = E::Fin;
        else if (rc) return DeLmdb(rc, Lecture);
        else if (cc.etat == E::Sur && !Egaux(kv, cc.cle)) cc.etat = E::Avant;  // its key went
    }
    switch (m) {
        case Mouvement::Premiere: rc = mdb_cursor_get(c, &kv, &dv, MDB_FIRST); break;
        case Mouvement::Derniere: rc = mdb_cursor_get(c, &kv, &dv, MDB_LAST); break;
        case Mouvement::Egale:
        case Mouvement::SuperieureOuEgale:
            kv = Val(cle, longueur);
            rc = mdb_cursor_get(c, &kv, &dv, MDB_SET_RANGE);
            break;
        case Mouvement::Suivante:
            switch (cc.etat) {
                case E::Aucune:
                case E::Debut: rc = mdb_cursor_get(c, &kv, &dv, MDB_FIRST); break;
                case E::Sur: rc = mdb_cursor_get(c, &kv, &dv, MDB_NEXT); break;
                case E::Avant: rc = mdb_cursor_get(c, &kv, &dv, MDB_GET_CURRENT); break;
                case E::Fin: rc = MDB_NOTFOUND; break;
            }
            break;
        case Mouvement::Precedente:
            switch (cc.etat) {
                case E::Aucune:
                case E::Fin: rc = mdb_cursor_get(c, &kv, &dv, MDB_LAST); break;
                case E::Sur:
                case E::Avant: rc = mdb_cursor_get(c, &kv, &dv, MDB_PREV); break;
                case E::Debut: rc = MDB_NOTFOUND; break;
            }
            break;
    }
    p = 0;
    if (rc == MDB_NOTFOUND) {
        cc.etat = m == Mouvement::Precedente ? E::Debut : E::Fin;
        return {};
    }
    if (rc) return DeLmdb(rc, Lecture);
    cc.serie = l.SeriePlaces();
    if (m == Mouvement::Egale && (kv.mv_size != longueur || std::memcmp(kv.mv_data, cle, longueur) != 0)) {
        cc.etat = E::Avant;
        cc.cle.assign(static_cast<const char*>(cle), longueur);
        return {};
    }
    cc.etat = E::Sur;
    cc.cle.assign(static_cast<const char*>(kv.mv_data), kv.mv_size);
    if (tampon) std::memcpy(tampon, kv.mv_data, std::min(kv.mv_size, longueur));
    p = PositionDe(dv);
    if (p == 0) return {FichierCorrompu, 0};
    return {};
}

Position OperationCle(int numeroCle, Mouvement m, const void* cle, void* tampon) {
    int k = 0;
    Liaison* l = LiaisonCle(numeroCle, k);
    if (!l) return Fin(0, {NumeroInvalide, 0});
    if (!tampon && m != Mouvement::Egale) return Fin(0, {Lecture, static_cast<int16_t>(EINVAL)});
    if (!cle && (m == Mouvement::Egale || m == Mouvement::SuperieureOuEgale))
        return Fin(0, {Lecture, static_cast<int16_t>(EINVAL)});
    Statut st;
    MDB_txn* txn = Debut(*l, st);
    if (!txn) return Fin(0, st);
    Position p = 0;
    st = Deplace(*l, k, txn, m, cle, tampon, p);
    return Fin(p, Termine(*l, st, false));
}

// --- Records ------------------------------------------------------------

Statut Cherche(const Fichier& f, MDB_txn* txn, Position position, MDB_val& v) {
    if (position == 0) return {PositionInvalide, 0};
    MDB_val k = Val(&position, sizeof position);
    const int rc = mdb_get(txn, f.fiches, &k, &v);
    if (rc == MDB_NOTFOUND) return {PositionInvalide, 0};
    return DeLmdb(rc, Lecture);
}

// Writes `longueur` bytes at `position`, taking them from `source` (which
// may lie in the map itself: the put may move it).
Statut Pose(Fichier& f, MDB_txn* txn, Position position, const void* source, size_t longueur, unsigned drapeaux) {
    MDB_val k = Val(&position, sizeof position), v{longueur, nullptr};
    const int rc = mdb_put(txn, f.fiches, &k, &v, drapeaux | MDB_RESERVE);
    if (rc) return DeLmdb(rc, Ecriture);
    f.octets += longueur;
    if (source) std::memcpy(v.mv_data, source, longueur);
    else std::memset(v.mv_data, 0, longueur);
    return {};
}

Statut LisEntete(MDB_txn* txn, Entete& e) {
    MDB_dbi principale;
    MDB_val k = Val("VDX32", 5), v;
    int rc = mdb_dbi_open(txn, nullptr, 0, &principale);
    if (!rc) rc = mdb_get(txn, principale, &k, &v);
    if (rc || v.mv_size != sizeof e) return rc ? DeLmdb(rc, Lecture) : Statut{FichierCorrompu, 0};
    std::memcpy(&e, v.mv_data, sizeof e);
    return {};
}

Statut EcrisEntete(MDB_txn* txn, const Entete& e) {
    MDB_dbi principale;
    MDB_val k = Val("VDX32", 5), v = Val(&e, sizeof e);
    int rc = mdb_dbi_open(txn, nullptr, 0, &principale);
    if (!rc) rc = mdb_put(txn, principale, &k, &v, 0);
    return DeLmdb(rc, Ecriture);
}

// A new record of `longueur` zero bytes: a freed position if there is one.
Statut Reserve(Fichier& f, MDB_txn* txn, uint32_t longueur, Position& p) {
    MDB_cursor* c = nullptr;
    int rc = mdb_cursor_open(txn, f.libres, &c);
    MDB_val k{}, v{};
    if (!rc) rc = mdb_cursor_get(c, &k, &v, MDB_FIRST);
    if (rc == 0) {
        p = PositionDe(k);
        rc = mdb_cursor_del(c, 0);
        mdb_cursor_close(c);
        if (rc) return DeLmdb(rc, Ecriture);
        return Pose(f, txn, p, nullptr, longueur, 0);
    }
    if (c) mdb_cursor_close(c);
    if (rc != MDB_NOTFOUND) return DeLmdb(rc, Ecriture);
    Entete e;
    if (Statut st = LisEntete(txn, e); !st) return st;
    if (e.prochaine == 0) return {Ecriture, static_cast<int16_t>(EFBIG)};  // all 32-bit positions given
    p = e.prochaine++;
    if (Statut st = EcrisEntete(txn, e); !st) return st;
    // Positions given so far are all below it: appending is right and quick.
    return Pose(f, txn, p, nullptr, longueur, MDB_APPEND);
}

// Runs `action(fichier, txn)` for a record operation on data number `numero`.
template <class Action>
int SurFiche(int numero, bool ecrit, Action&& action) {
    Statut st;
    Liaison* l = LiaisonDonnees(numero);
    if (ecrit) l = Ecrivain(l, st);
    else if (!l) st = {NumeroInvalide, 0};
    if (!l) return Fin(st);
    MDB_txn* txn = Debut(*l, st);
    if (!txn) return Fin(st);
    st = action(*l->fichier, txn);
    return Fin(Termine(*l, st, ecrit));
}

Position Nouvelle(int numero, bool variable, uint32_t longueur) {
    Position p = 0;
    SurFiche(numero, true, [&](Fichier& f, MDB_txn* txn) -> Statut {
        if (variable && !f.Variable()) return {GenreIncompatible, 0};
        return Reserve(f, txn, variable ? longueur : f.entete.longueurFiche, p);
    });
    return globales.ErreurMagasin ? 0 : p;
}

int Libere(int numero, Position position) {
    return SurFiche(numero, true, [&](Fichier& f, MDB_txn* txn) -> Statut {
        if (position == 0) return {PositionInvalide, 0};
        MDB_val k = Val(&position, sizeof position), vide{0, nullptr};
        int rc = mdb_del(txn, f.fiches, &k, nullptr);
        if (rc == MDB_NOTFOUND) return {PositionInvalide, 0};
        if (!rc) rc = mdb_put(txn, f.libres, &k, &vide, 0);
        return DeLmdb(rc, Ecriture);
    });
}

// --- Closing all --------------------------------------------------------

void FermeTout() {
    for (int n = 0; n < etat->limite; ++n)
        if (etat->liaisons[n].Liee()) Delie(n);
}

std::vector<uint32_t> LongueursDes(const std::vector<DescriptionCle>& cles) {
    std::vector<uint32_t> longueurs;
    for (const DescriptionCle& c : cles) {
        uint64_t n = 0;
        for (const Segment& s : c.segments) n += s.longueur;
        longueurs.push_back(static_cast<uint32_t>(std::min<uint64_t>(n, UINT32_MAX)));
    }
    return longueurs;
}

bool LongueursValides(const std::vector<uint32_t>& longueurs) {
    return !longueurs.empty() && longueurs.size() <= MaxCles &&
           std::all_of(longueurs.begin(), longueurs.end(),
                       [](uint32_t n) { return n >= 1 && n <= LongueurCleMax; });
}

}  // namespace

// --- The operations -----------------------------------------------------

int InitialiseMagasin(int /*tampons*/, int fichiers, int /*secteurs*/) {
    if (fichiers < 1 || fichiers > NumerosMax) return Fin({NumeroInvalide, 0});
    // A second start without a stop: what the first left open is closed.
    FermeTout();
    etat->limite = fichiers;
    etat->numeros.assign(static_cast<size_t>(fichiers), {});
    etat->liaisons.resize(static_cast<size_t>(fichiers));
    return Fin({});
}

Globales* GlobalesMagasin() { return &globales; }

void TermineMagasin() {
    FermeTout();
    etat->limite = 0;
    etat->numeros.clear();
    etat->liaisons.clear();
    etat->fichiers.Vide();
    Fin({});
}

bool SynchroniseEcritures(bool oui) { return std::exchange(Synchronisation(), oui); }

bool CartesBornees(bool oui) { return std::exchange(Bornees(), oui); }

int OpenCtFile(int numero, const char* chemin, int mode) {
    if (!Libre(numero)) return Fin({NumeroInvalide, 0});
    if (!chemin || !*chemin) return Fin({OuvertureImpossible, static_cast<int16_t>(ENOENT)});
    const Acces acces = AccesDuMode(mode);
    Statut st;
    auto f = etat->fichiers.Ouvre(chemin, acces != Acces::Lecture, st);
    if (!f) return Fin(st);
    return Fin(OuvreSur(numero, chemin, std::move(f), acces, false));
}

int CloseCtFile(int numero, int /*mode*/) {
    if (numero < 0 || numero >= etat->limite) return Fin({NumeroInvalide, 0});
    const Numero& n = etat->numeros[numero];
    if (n.liaison != numero || n.cle > 0) return Fin({NumeroInvalide, 0});
    return Fin(Delie(numero));
}

Position PremiereCle(int k, void* tampon) { return OperationCle(k, Mouvement::Premiere, nullptr, tampon); }
Position DerniereCle(int k, void* tampon) { return OperationCle(k, Mouvement::Derniere, nullptr, tampon); }
Position CleSuivante(int k, void* tampon) { return OperationCle(k, Mouvement::Suivante, nullptr, tampon); }
Position ClePrecedente(int k, void* tampon) { return OperationCle(k, Mouvement::Precedente, nullptr, tampon); }
Position CleEgale(int k, const void* cle) { return OperationCle(k, Mouvement::Egale, cle, nullptr); }
Position CleSuperieureOuEgale(int k, const void* cle, void* tampon) {
    return OperationCle(k, Mouvement::SuperieureOuEgale, cle, tampon);
}

EtatLecture EtatFichier(int numero) {
    if (numero < 0 || numero >= etat->limite) return {};
    const Numero& n = etat->numeros[numero];
    if (n.liaison < 0) return {};
    const Liaison& l = etat->liaisons[n.liaison];
    if (!l.Liee() || l.acces != Acces::Lecture || !l.lecture.txn) return {};
    return {l.fichier->instance, static_cast<uint64_t>(mdb_txn_id(l.lecture.txn))};
}

EtatLecture EtatChemin(std::string_view chemin) {
    if (chemin.empty()) return {};
    Statut st;
    const std::shared_ptr<Fichier> f = etat->fichiers.Ouvre(chemin, false, st);
    if (!f || f->sansCarte) return {};
    MDB_envinfo info{};
    mdb_env_info(f->env, &info);
    return {f->instance, static_cast<uint64_t>(info.me_last_txnid)};
}

int LongueurCle(int numeroCle) {
    int k = 0;
    const Liaison* l = LiaisonCle(numeroCle, k);
    if (!l) return Fin({NumeroInvalide, 0}), 0;
    Fin({});
    return static_cast<int>(l->fichier->entete.longueursCles[k]);
}

int LitFiche(int numero, Position position, void* tampon) {
    return SurFiche(numero, false, [&](Fichier& f, MDB_txn* txn) -> Statut {
        MDB_val v;
        if (Statut st = Cherche(f, txn, position, v); !st) return st;
        const size_t n = f.entete.longueurFiche, copie = std::min(n, v.mv_size);
        std::memcpy(tampon, v.mv_data, copie);
        std::memset(static_cast<char*>(tampon) + copie, 0, n - copie);
        return {};
    });
}

int LitFicheEntiere(int numero, Position position, std::string& fiche) {
    return SurFiche(numero, false, [&](Fichier& f, MDB_txn* txn) -> Statut {
        MDB_val v;
        if (Statut st = Cherche(f, txn, position, v); !st) return st;
        // A fixed record has the file's length whatever was stored.
        fiche.assign(static_cast<const char*>(v.mv_data), v.mv_size);
        if (!f.Variable()) fiche.resize(f.entete.longueurFiche, '\0');
        return {};
    });
}

int VueFiche(int numero, Position position, std::string_view& fiche) {
    const Liaison* l = LiaisonDonnees(numero);
    if (!l || l->acces != Acces::Lecture) return Fin({NumeroInvalide, 0});
    return SurFiche(numero, false, [&](Fichier& f, MDB_txn* txn) -> Statut {
        MDB_val v;
        if (Statut st = Cherche(f, txn, position, v); !st) return st;
        fiche = {static_cast<const char*>(v.mv_data), v.mv_size};
        return {};
    });
}

uint32_t LongueurFiche(int numero, Position position) {
    uint32_t longueur = 0;
    SurFiche(numero, false, [&](Fichier& f, MDB_txn* txn) -> Statut {
        MDB_val v;
        Statut st = Cherche(f, txn, position, v);
        if (st) longueur = static_cast<uint32_t>(v.mv_size);
        return st;
    });
    return longueur;
}

int LitFicheVariable(int numero, Position position, void* tampon, uint32_t longueur) {
    return SurFiche(numero, false, [&](Fichier& f, MDB_txn* txn) -> Statut {
        MDB_val v;
        if (Statut st = Cherche(f, txn, position, v); !st) return st;
        if (v.mv_size > longueur) return {Lecture, static_cast<int16_t>(EOVERFLOW)};
        std::memcpy(tampon, v.mv_data, v.mv_size);
        std::memset(static_cast<char*>(tampon) + v.mv_size, 0, longueur - v.mv_size);
        return {};
    });
}

Position NewRecord(int numero) { return Nouvelle(numero, false, 0); }

Position NouvelleFicheVariable(int numero, uint32_t longueur) { return Nouvelle(numero, true, longueur); }

int WriteRecordData(int numero, Position position, const void* tampon) {
    return SurFiche(numero, true, [&](Fichier& f, MDB_txn* txn) -> Statut {
        MDB_val v;
        if (Statut st = Cherche(f, txn, position, v); !st) return st;
        const size_t fixe = f.entete.longueurFiche;
        if (!f.Variable() || v.mv_size <= fixe) return Pose(f, txn, position, tampon, fixe, 0);
        // The fixed part of a longer variable record: its tail stays.
        std::string fiche(static_cast<const char*>(v.mv_data), v.mv_size);
        std::memcpy(fiche.data(), tampon, fixe);
        return Pose(f, txn, position, fiche.data(), fiche.size(), 0);
    });
}

int EcritFicheVariable(int numero, Position position, const void* tampon, uint32_t longueur) {
    return SurFiche(numero, true, [&](Fichier& f, MDB_txn* txn) -> Statut {
        if (!f.Variable()) return {GenreIncompatible, 0};
        MDB_val v;
        if (Statut st = Cherche(f, txn, position, v); !st) return st;
        return Pose(f, txn, position, tampon, longueur, 0);
    });
}

int LibereFiche(int numero, Position position) { return Libere(numero, position); }

int LibereFicheVariable(int numero, Position position) { return Libere(numero, position); }

int AddRecordKey(int numeroCle, const void* cle, Position position, int ordre) {
    int k = 0;
    Statut st;
    Liaison* l = Ecrivain(LiaisonCle(numeroCle, k), st);
    if (!l) return Fin(st);
    if (position == 0) return Fin({PositionInvalide, 0});
    MDB_txn* txn = Debut(*l, st);
    if (!txn) return Fin(st);
    Fichier& f = *l->fichier;
    MDB_val kv = Val(cle, f.entete.longueursCles[k]), dv = Val(&position, sizeof position);
    int rc = MDB_KEYEXIST;
    // Keys in rising order go to the end of the tree at once; any other falls back.
    if (ordre) rc = mdb_put(txn, f.cles[k], &kv, &dv, MDB_NOOVERWRITE | MDB_APPEND);
    if (rc == MDB_KEYEXIST) rc = mdb_put(txn, f.cles[k], &kv, &dv, MDB_NOOVERWRITE);
    if (rc == 0) f.octets += kv.mv_size + dv.mv_size;
    return Fin(Termine(*l, DeLmdb(rc, Ecriture), rc == 0));
}

int DeleteRecordKey(int numeroCle, const void* cle, Position position) {
    int k = 0;
    Statut st;
    Liaison* l = Ecrivain(LiaisonCle(numeroCle, k), st);
    if (!l) return Fin(st);
    MDB_txn* txn = Debut(*l, st);
    if (!txn) return Fin(st);
    Fichier& f = *l->fichier;
    MDB_val kv = Val(cle, f.entete.longueursCles[k]), dv;
    int rc = mdb_get(txn, f.cles[k], &kv, &dv);
    if (rc == 0 && position != 0 && PositionDe(dv) != position) rc = MDB_NOTFOUND;
    if (rc == 0) rc = mdb_del(txn, f.cles[k], &kv, nullptr);
    st = rc == MDB_NOTFOUND ? Statut{CleAbsente, 0} : DeLmdb(rc, Ecriture);
    return Fin(Termine(*l, st, rc == 0));
}

int CreateDataFile(int numero, const char* chemin, uint32_t longueurFiche, int /*extension*/, int mode) {
    if (!Libre(numero)) return Fin({NumeroInvalide, 0});
    const Acces acces = AccesDuMode(mode);
    const bool variable = (mode & Variable) != 0;
    if (!chemin || !*chemin || acces == Acces::Lecture || (!variable && longueurFiche == 0))
        return Fin({Creation, static_cast<int16_t>(EINVAL)});
    Statut st;
    auto f = etat->fichiers.Cree(chemin, EnteteDonnees(longueurFiche, variable), acces == Acces::Exclusif, st);
    if (!f) return Fin(st);
    return Fin(OuvreSur(numero, chemin, std::move(f), acces, true));
}

int CreateIndexFile(int numero, const char* chemin, int longueurCle, int typeCle, int doublons, int /*membres*/,
                    int /*extension*/, int mode) {
    if (!Libre(numero)) return Fin({NumeroInvalide, 0});
    const Acces acces = AccesDuMode(mode);
    const std::vector<uint32_t> longueurs{static_cast<uint32_t>(std::max(longueurCle, 0))};
    if (!chemin || !*chemin || acces == Acces::Lecture || typeCle != 0 || doublons != 0 ||
        !LongueursValides(longueurs))
        return Fin({Creation, static_cast<int16_t>(EINVAL)});
    Statut st;
    auto f = etat->fichiers.Cree(chemin, EnteteIndex(longueurs), acces == Acces::Exclusif, st);
    if (!f) return Fin(st);
    return Fin(OuvreSur(numero, chemin, std::move(f), acces, true));
}

int CreateIndexMember(int numeroIndex, int longueurCle, int typeCle, int doublons, int membre) {
    int k = 0;
    Statut st;
    Liaison* l = Ecrivain(LiaisonCle(numeroIndex, k), st);
    if (!l || k != 0) return Fin(l ? Statut{NumeroInvalide, 0} : st);
    Fichier& f = *l->fichier;
    if (membre != static_cast<int>(f.entete.nombreCles) || !Libre(numeroIndex + membre))
        return Fin({NumeroInvalide, 0});
    if (typeCle != 0 || doublons != 0 || longueurCle < 1 || static_cast<uint32_t>(longueurCle) > LongueurCleMax ||
        membre >= MaxCles)
        return Fin({Creation, static_cast<int16_t>(EINVAL)});
    MDB_txn* txn = Debut(*l, st);
    if (!txn) return Fin(st);
    Entete e = f.entete;
    e.longueursCles[e.nombreCles++] = static_cast<uint32_t>(longueurCle);
    MDB_dbi dbi;
    int rc = mdb_dbi_open(txn, ("cle" + std::to_string(membre + 1)).c_str(), MDB_CREATE, &dbi);
    st = rc ? DeLmdb(rc, Creation) : EcrisEntete(txn, e);
    // Committed at once: the new database handle then belongs to the environment.
    const Statut c = f.FinEcriture(true);
    if (st) st = c;
    if (!st) return Fin(st);
    f.entete = e;
    f.cles[membre] = dbi;
    l->cles.emplace_back();
    etat->numeros[numeroIndex + membre] = {numeroIndex, membre};
    return Fin({});
}

int ReconstruitFichier(const DescriptionFichier& d) {
    const std::vector<uint32_t> longueurs = LongueursDes(d.cles);
    if (!LongueursValides(longueurs)) return Fin({Creation, static_cast<int16_t>(EINVAL)});
    Statut st;
    auto fd = etat->fichiers.Ouvre(d.cheminDonnees, true, st);
    if (!fd) return Fin(st);
    if (!fd->Donnees()) return Fin({OuvertureImpossible, FichierEtranger});
    Liaison donnees, index;
    if (!(st = Attache(donnees, std::move(fd), Acces::Exclusif, false))) return Fin(st);
    auto fi = etat->fichiers.Cree(d.cheminIndex, EnteteIndex(longueurs), true, st);
    if (!fi) {
        Detache(donnees);
        return Fin(st);
    }
    Attache(index, std::move(fi), Acces::Exclusif, true);

    bool doublon = false;
    MDB_txn* lecture = Debut(donnees, st);
    MDB_cursor* c = nullptr;
    if (lecture && (st = DeLmdb(mdb_cursor_open(lecture, donnees.fichier->fiches, &c), Lecture))) {
        std::string cle;
        MDB_val kv{}, dv{};
        int rc = mdb_cursor_get(c, &kv, &dv, MDB_FIRST);
        for (; rc == 0 && st; rc = mdb_cursor_get(c, &kv, &dv, MDB_NEXT)) {
            Position p = PositionDe(kv);
            const auto* fiche = static_cast<const char*>(dv.mv_data);
            for (size_t k = 0; k < d.cles.size() && st; ++k) {
                // Bytes past the end of a short record read as NUL.
                cle.clear();
                for (const Segment& s : d.cles[k].segments)
                    for (uint32_t i = 0; i < s.longueur; ++i) {
                        const uint64_t o = uint64_t{s.decalage} + i;
                        cle.push_back(o < dv.mv_size ? fiche[o] : '\0');
                    }
                MDB_txn* txn = Debut(index, st);
                if (!txn) break;
                MDB_val ck = Val(cle.data(), cle.size()), cp = Val(&p, sizeof p);
                const int r = mdb_put(txn, index.fichier->cles[k], &ck, &cp, MDB_NOOVERWRITE);
                if (r == 0) index.fichier->octets += ck.mv_size + cp.mv_size;
                doublon |= r == MDB_KEYEXIST;
                st = Termine(index, r == MDB_KEYEXIST ? Statut{} : DeLmdb(r, Ecriture), r == 0);
            }
        }
        if (rc != MDB_NOTFOUND && rc != 0 && st) st = DeLmdb(rc, Lecture);
    }
    const Statut fi1 = Detache(index);
    Detache(donnees);  // its cursor ends with its transaction
    if (st && !fi1) st = fi1;
    if (st && doublon) st = {CleExistante, 0};
    return Fin(st);
}

void MarqueRemplace(const char* chemin) {
    if (chemin) MarqueRemplaceChemin(chemin);
}

void FermeFichiersInactifs() { etat->fichiers.OteInactifs(); }

void MarqueRemplaceDossier(const char* dossier) {
    std::error_code e;
    if (!dossier) return;
    for (const auto& entree : std::filesystem::directory_iterator(dossier, e))
        if (entree.is_regular_file(e)) MarqueRemplaceChemin(entree.path().string().c_str());
}

}  // namespace vdx::magasin
