#include "session/tables.h"

#include <algorithm>
#include <cerrno>

#include "platform/fichiers.h"
#include "session/cadre.h"
#include "session/session.h"

namespace vdx {
namespace {

using namespace magasin;

int16_t ErreurCourante() { return GlobalesMagasin()->ErreurMagasin; }
int16_t EtatIOCourant() { return GlobalesMagasin()->EtatIOMagasin; }

// A path in a buffer of the fixed size; a longer one can't be opened.
bool CheminValide(const std::string& chemin) { return chemin.size() < TailleChemin; }

// Opens `repertoire` + `nom`; when the number is still held by a call that
// ended badly, closes it and tries once more.
// `repertoire` + `nom` in one buffer of the thread: the path of a file seen
// before allocates nothing.
const std::string& CheminDe(const std::string& repertoire, const char* nom) {
    thread_local std::string chemin;
    return chemin.assign(repertoire).append(nom);
}

int OuvreAvecReprise(const std::string& repertoire, const char* nom, int numero, int mode) {
    const std::string& chemin = CheminDe(repertoire, nom);
    if (CheminValide(chemin)) {
        if (OpenCtFile(numero, chemin.c_str(), mode) == 0) return 1;
        CloseCtFile(numero, LectureSeule);
        if (OpenCtFile(numero, chemin.c_str(), mode) == 0) return 1;
        // The base put in place by another process: its directory was briefly absent.
        if (EtatIOCourant() == ENOENT && systeme::AttendsDossier(repertoire) &&
            OpenCtFile(numero, chemin.c_str(), mode) == 0)
            return 1;
    }
    session().FichierErreur = nom;
    return 0;
}

int FermeNumero(const char* nom, int numero, int mode) {
    if (CloseCtFile(numero, mode) == 0) return 1;
    session().FichierErreur = nom;
    return 0;
}

// Another process holds the doctor's base: wait for it by trying again.
int OuvreMedecin(const char* nom, int numero, int mode, int modeReprise) {
    const std::string chemin = ContexteCourant().CheminMedecin + nom;
    if (!CheminValide(chemin)) {
        session().FichierErreur = nom;
        return 0;
    }
    int erreur = OpenCtFile(numero, chemin.c_str(), mode);
    while (erreur == OuvertureImpossible && EtatIOCourant() == TenuAilleurs)
        erreur = OpenCtFile(numero, chemin.c_str(), modeReprise);
    if (erreur == 0) return 1;
    session().FichierErreur = nom;
    return 0;
}

int FermeMedecin(const char* nom, int numero, int mode) {
    if (CloseCtFile(numero, mode) == 0) return 1;
    session().FichierErreur = ContexteCourant().CheminMedecin + nom;
    return 0;
}

}  // namespace

int OuvreTable(const char* nom, int numero) {
    return OuvreAvecReprise(ContexteCourant().BaseFichiers, nom, numero, LectureSeule);
}
int FermeTable(const char* nom, int numero) { return FermeNumero(nom, numero, LectureSeule); }
int OuvreTableVariable(const char* nom, int numero) {
    return OuvreAvecReprise(ContexteCourant().BaseFichiers, nom, numero, LectureSeule | Variable);
}
int FermeTableVariable(const char* nom, int numero) {
    return FermeNumero(nom, numero, LectureSeule | Variable);
}
int OuvreTableMedecin(const char* nom, int numero, int mode) { return OuvreMedecin(nom, numero, mode, mode); }
int FermeTableMedecin(const char* nom, int numero, int mode) { return FermeMedecin(nom, numero, mode); }
int OuvreTableMedecinVariable(const char* nom, int numero, int mode) {
    return OuvreMedecin(nom, numero, mode, mode | Variable);
}
int FermeTableMedecinVariable(const char* nom, int numero, int mode) {
    return FermeMedecin(nom, numero, mode | Variable);
}
int OuvreTableMaj(const char* nom, int numero, bool variable) {
    return OuvreAvecReprise(ContexteCourant().BaseFichiers, nom, numero, variable ? Variable : Exclusif);
}
int FermeTableMaj(const char* nom, int numero, bool variable) {
    return FermeNumero(nom, numero, variable ? Variable : Exclusif);
}

bool EtatsDesTables(std::span<const Table* const> tables, std::span<EtatLecture> etats) {
    if (etats.size() != 2 * tables.size()) throw FauteInterne("etats des tables");
    const std::string& base = ContexteCourant().BaseFichiers;
    auto e = etats.begin();
    for (const Table* t : tables)
        for (const char* nom : {t->fichierDonnees, t->fichierIndex}) {
            const std::string& chemin = CheminDe(base, nom);
            *e = CheminValide(chemin) ? EtatChemin(chemin) : EtatLecture{};
            if (*e++ == EtatLecture{}) return false;
        }
    return true;
}

void FermeBaseMedecin() {
    static const struct {
        const char* nom;
        int numero;
        bool variable;
    } fichiers[] = {
        {"PRO.DAT", 279, false},  {"PRO.NDX", 280, false},  {"PATH.DAT", 282, false},
        {"PATH.NDX", 283, false}, {"POSO.DAT", 285, false}, {"POSO.NDX", 286, false},
        {"TEXU.DAT", 287, true},  {"TEXU.NDX", 288, false},
    };
    for (int mode : {int(Exclusif), int(LectureSeule)})
        for (const auto& f : fichiers) CloseCtFile(f.numero, f.variable ? mode | Variable : mode);
}

namespace {

// The holders of each file number, and the file each number is bound to.
struct Detention {
    int detenteurs = 0;
    std::string nom;
};
std::vector<Detention>& Detentions() {
    static std::vector<Detention> detentions(NombreNumeros);
    return detentions;
}

// One holder less; true when it was the last one and the file is to close.
bool Relache(int numero) {
    Detention& d = Detentions().at(static_cast<size_t>(numero));
    return d.detenteurs > 0 && --d.detenteurs == 0;
}

}  // namespace

TablesOuvertes::TablesOuvertes(std::initializer_list<const Table*> tables)
    : TablesOuvertes(std::span<const Table* const>(tables.begin(), tables.size())) {}

TablesOuvertes::TablesOuvertes(std::span<const Table* const> tables) {
    ouverts_.reserve(2 * tables.size());  // data and index
    try {
        for (const Table* t : tables) Ouvre(*t);
    } catch (...) {
        // No destructor runs for an object whose constructor leaves: what
        // it opened before the failure is let go here.
        RelacheTout();
        throw;
    }
}

TablesOuvertes::~TablesOuvertes() { RelacheTout(); }

void TablesOuvertes::RelacheTout() {
    for (const Fichier& f : ouverts_)
        if (Relache(f.numero)) CloseCtFile(f.numero, LectureSeule);
    ouverts_.clear();
}

int TablesOuvertes::Detenteurs(int numero) { return Detentions().at(static_cast<size_t>(numero)).detenteurs; }

bool TablesOuvertes::Tenues() {
    return std::ranges::any_of(Detentions(), [](const Detention& d) { return d.detenteurs > 0; });
}

void TablesOuvertes::Ajoute(Fichier f) {
    if (f.numero < 0 || f.numero >= static_cast<int>(Detentions().size())) throw FauteInterne("numero de fichier");
    Detention& d = Detentions()[static_cast<size_t>(f.numero)];
    if (d.detenteurs > 0) {
        // Held by a caller: the same file is taken again; another file on
        // the same number is a fault of the library.
        if (d.nom != f.nom) throw FauteInterne("numero deja lie a " + d.nom);
        ++d.detenteurs;
        ouverts_.push_back(f);
        return;
    }
    const bool ouvert = f.medecin ? OuvreTableMedecin(f.nom, f.numero, LectureSeule) : OuvreTable(f.nom, f.numero);
    if (!ouvert) throw EchecMagasinSur(session().FichierErreur);
    d = {1, f.nom};
    ouverts_.push_back(f);
}

void TablesOuvertes::Ouvre(const Table& table) {
    Ajoute({table.fichierDonnees, table.donnees, false});
    Ajoute({table.fichierIndex, table.index(), false});
}

void TablesOuvertes::OuvreFichier(const char* nom, int numero) { Ajoute({nom, numero, false}); }

void TablesOuvertes::OuvreMedecin(const Table& table) {
    Ajoute({table.fichierDonnees, table.donnees, true});
    Ajoute({table.fichierIndex, table.index(), true});
}

void TablesOuvertes::Ferme() {
    std::vector<Fichier> fichiers;
    fichiers.swap(ouverts_);
    std::optional<Echec> echec;
    for (const Fichier& f : fichiers) {
        if (!Relache(f.numero)) continue;
        if (echec)
            CloseCtFile(f.numero, LectureSeule);  // the first failure is the one reported
        else if (!(f.medecin ? FermeTableMedecin(f.nom, f.numero, LectureSeule) : FermeTable(f.nom, f.numero)))
            echec = EchecMagasinSur(session().FichierErreur);
    }
    if (echec) throw *echec;
}

Curseur::Curseur(const Table& table, int cle)
    : table_(table), numero_(table.cle(cle)), longueur_(0) {
    const int longueur = LongueurCle(numero_);
    if (longueur <= 0) throw EchecMagasinSur(table.fichierIndex);
    longueur_ = static_cast<size_t>(longueur);
    tampon_.assign(longueur_, '\0');
}

std::optional<Position> Curseur::Resultat(Position p) {
    if (p != 0) return p;
    if (ErreurCourante() == 0) return std::nullopt;
    throw EchecMagasinSur(table_.fichierIndex);
}

std::string Curseur::Complete(std::string_view cle) const {
    std::string complete(longueur_, '\0');
    cle.copy(complete.data(), std::min(cle.size(), longueur_));
    return complete;
}

std::optional<Position> Curseur::Premiere() { return Resultat(PremiereCle(numero_, tampon_.data())); }
std::optional<Position> Curseur::Derniere() { return Resultat(DerniereCle(numero_, tampon_.data())); }
std::optional<Position> Curseur::Suivante() { return Resultat(CleSuivante(numero_, tampon_.data())); }
std::optional<Position> Curseur::Precedente() { return Resultat(ClePrecedente(numero_, tampon_.data())); }

std::optional<Position> Curseur::Egale(std::string_view cle) {
    const std::string complete = Complete(cle);
    const Position p = CleEgale(numero_, complete.data());
    if (p != 0) complete.copy(tampon_.data(), longueur_);
    return Resultat(p);
}

std::optional<Position> Curseur::SuperieureOuEgale(std::string_view cle) {
    return Resultat(CleSuperieureOuEgale(numero_, Complete(cle).data(), tampon_.data()));
}

std::optional<Position> Curseur::PremiereAvec(std::string_view prefixe) {
    const auto p = SuperieureOuEgale(prefixe);
    return p && Cle().starts_with(prefixe) ? p : std::nullopt;
}

std::optional<Position> Curseur::SuivanteAvec(std::string_view prefixe) {
    const auto p = Suivante();
    return p && Cle().starts_with(prefixe) ? p : std::nullopt;
}

std::string FicheA(const Table& table, Position position) {
    std::string fiche;
    if (LitFicheEntiere(table.donnees, position, fiche) != 0) throw EchecMagasinSur(table.fichierDonnees);
    return fiche;
}

std::string_view VueFicheA(const Table& table, Position position) {
    std::string_view fiche;
    if (VueFiche(table.donnees, position, fiche) != 0) throw EchecMagasinSur(table.fichierDonnees);
    return fiche;
}

}  // namespace vdx
