#include "medecin/base_medecin.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "maj/unite.h"
#include "medecin/verrou.h"
#include "platform/chemin.h"
#include "session/cadre.h"
#include "session/codes.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/layouts.h"
#include "store/magasin.h"
#include "store/sources.h"

namespace vdx::medecin {

namespace {

namespace fs = std::filesystem;

// The numbers the older texts' files are read on (those of PATH, closed then).
constexpr int NumeroAncienTexte = 282;

// The doctor's files are created and written shared with other processes
// (mode 1, and 5 for variable records).
int ModeDonnees(const Table& t) { return magasin::Partage | (t.genre == Genre::Variable ? magasin::Variable : 0); }
int ModeLecture(const Table& t) { return magasin::LectureSeule | (t.genre == Genre::Variable ? magasin::Variable : 0); }

bool Existe(const fs::path& chemin) {
    std::error_code erreur;
    return fs::exists(chemin, erreur);
}

[[noreturn]] void EchecSur(const std::string& dossier, const std::string& fichier) {
    throw Echec{EchecMagasin, magasin::GlobalesMagasin()->ErreurMagasin, magasin::GlobalesMagasin()->EtatIOMagasin,
                dossier + fichier};
}

std::string Dossier(std::string_view chemin) {
    if (chemin.empty()) throw Echec{Argument1};
    if (!NomValide(chemin)) throw Echec{CodeMalForme};
    return chemin::Repertoire(std::string(chemin));
}

// The two files of a table of the doctor's created on the numbers from
// `donnees`, left open for writing. False at the first step that fails.
bool CreeFichiers(const Table& t, int donnees, const std::string& cheminDonnees, const std::string& cheminIndex) {
    return CreeFichiersTable(DispositionDe(t), donnees, cheminDonnees, cheminIndex, ModeDonnees(t), magasin::Partage) == 0;
}

// Closes both files of a table opened for writing on the numbers from
// `donnees` (which commits them); false when a close failed.
bool FermeFichiers(const Table& t, int donnees) {
    const int erreurDonnees = magasin::CloseCtFile(donnees, ModeDonnees(t));
    const int erreurIndex = magasin::CloseCtFile(donnees + 1, magasin::Partage);
    return erreurDonnees == 0 && erreurIndex == 0;
}

// Files opened read-only on numbers of the caller's, closed on every way
// out.
class Ouverts {
public:
    explicit Ouverts(const std::string& dossier) : dossier_(dossier) {}
    ~Ouverts() {
        for (const auto& [numero, mode] : ouverts_) magasin::CloseCtFile(numero, mode);
    }
    Ouverts(const Ouverts&) = delete;
    Ouverts& operator=(const Ouverts&) = delete;
    void Ouvre(int numero, const char* fichier, int mode) {
        if (magasin::OpenCtFile(numero, (dossier_ + fichier).c_str(), mode) != 0) EchecSur(dossier_, fichier);
        ouverts_.emplace_back(numero, mode);
    }

private:
    const std::string& dossier_;
    std::vector<std::pair<int, int>> ouverts_;
};

// A file renamed, or Echec(-500) naming it.
void Renomme(const fs::path& de, const fs::path& vers) {
    std::error_code erreur;
    fs::rename(de, vers, erreur);
    if (erreur) throw Echec{EchecMagasin, magasin::Ecriture, 0, vers.string()};
}

// The pair `nom` + "1" built beside a table, put in its place: the old
// pair renamed to `nom` + "old" when `garde`, then the new one renamed in.
// A switch cut short is finished by the same steps: the data file first,
// then the index, each taken only where its place is free.
void TermineBascule(const fs::path& dossier, const std::string& nom, bool garde) {
    const auto f = [&](const std::string& suffixe, const char* extension) { return dossier / (nom + suffixe + extension); };
    if (Existe(f("1", ".DAT")) && !Existe(f("", ".DAT"))) {
        if (garde && Existe(f("", ".NDX"))) Renomme(f("", ".NDX"), f("old", ".NDX"));
        Renomme(f("1", ".DAT"), f("", ".DAT"));
    }
    if (Existe(f("1", ".NDX")) && !Existe(f("", ".NDX"))) Renomme(f("1", ".NDX"), f("", ".NDX"));
}

void Bascule(const fs::path& dossier, const std::string& nom, bool garde) {
    magasin::FermeFichiersInactifs();
    for (const char* extension : {".DAT", ".NDX"}) {
        const fs::path place = dossier / (nom + extension);
        magasin::MarqueRemplace(place.string().c_str());
        if (garde) Renomme(place, dossier / (nom + "old" + extension));
        else if (std::error_code erreur; !fs::remove(place, erreur) && erreur) throw Echec{EchecMagasin, magasin::Ecriture, 0, place.string()};
    }
    TermineBascule(dossier, nom, garde);
}

// Whether the label index of PRO holds the labels as they fold: its first
// key against its record's label folded. An empty table does not.
bool LibellesPlies(const std::string& dossier) {
    const Table& t = TableMedecin("PRO");
    const Disposition& d = DispositionDe(t);
    TablesOuvertes produits;
    produits.OuvreMedecin(t);
    std::string cle(d.cles[1].longueur, '\0');
    const magasin::Position p = magasin::PremiereCle(t.cle(1), cle.data());
    if (p == 0 && magasin::GlobalesMagasin()->ErreurMagasin != 0) EchecSur(dossier, t.fichierIndex);
    std::string fiche(d.longueur, '\0');
    const bool plies = p != 0 && magasin::LitFiche(t.donnees, p, fiche.data()) == 0 && CleDe(d, 1, fiche) == cle;
    produits.Ferme();
    return plies;
}

// Copies every record of a table, read on `source`, into a new pair built
// beside it (`nom` + "1") on the work numbers, for Bascule once the source
// is closed. `lit` gives the record at a position and key as the new table
// takes it.
template <typename Lecture>
void Reconstruit(const std::string& dossier, const Table& t, int source, const std::string& fichierSource, Lecture lit) {
    const std::string nom = std::string(t.nom) + "1";
    const Disposition& d = DispositionDe(t);
    if (!CreeFichiers(t, NumeroTravail, dossier + nom + ".DAT", dossier + nom + ".NDX")) {
        FermeFichiers(t, NumeroTravail);
        EchecSur(dossier, nom + ".DAT");
    }
    std::string cle(static_cast<size_t>(std::max(magasin::LongueurCle(source + 1), 1)), '\0');
    bool ecrit = true;
    for (magasin::Position p = magasin::PremiereCle(source + 1, cle.data()); ecrit && p != 0;
         p = magasin::CleSuivante(source + 1, cle.data())) {
        std::string fiche = lit(p, cle);
        const auto taille = static_cast<uint32_t>(fiche.size());
        const bool variable = t.genre == Genre::Variable;
        const magasin::Position n =
            variable ? magasin::NouvelleFicheVariable(NumeroTravail, taille) : magasin::NewRecord(NumeroTravail);
        ecrit = n != 0 && (variable ? magasin::EcritFicheVariable(NumeroTravail, n, fiche.data(), taille)
                                    : magasin::WriteRecordData(NumeroTravail, n, fiche.data())) == 0;
        for (size_t k = 0; ecrit && k < d.cles.size(); ++k) {
            std::string c = *CleDe(d, k, fiche, fiche);
            const int e = AjouteCle(d, k, c, fiche, n, NumeroTravail);
            ecrit = e == 0 || e == magasin::CleExistante;
        }
    }
    ecrit = ecrit && magasin::GlobalesMagasin()->ErreurMagasin == 0;
    const bool ferme = FermeFichiers(t, NumeroTravail);
    if (!ecrit || !ferme) EchecSur(dossier, ecrit ? nom + ".DAT" : fichierSource);
}

// The reading of a fixed record of a table at a position.
auto LectureFixe(const std::string& dossier, const Table& t) {
    return [&dossier, &t](magasin::Position p, const std::string&) {
        std::string fiche(DispositionDe(t).longueur, '\0');
        if (magasin::LitFiche(t.donnees, p, fiche.data()) != 0) EchecSur(dossier, t.fichierDonnees);
        return fiche;
    };
}

// PRO again, its label keys folded: the old pair kept as PROold.
void MigreProduits(const std::string& dossier) {
    const Table& t = TableMedecin("PRO");
    TablesOuvertes ancien;
    ancien.OuvreMedecin(t);
    Reconstruit(dossier, t, t.donnees, t.fichierIndex, LectureFixe(dossier, t));
    ancien.Ferme();
    Bascule(dossier, t.nom, true);
}

// TEXT, records without their key, into TEXU1, whose records begin with it.
void CopieTextes(const std::string& dossier, const Table& t) {
    Ouverts anciens(dossier);
    anciens.Ouvre(NumeroAncienTexte, "TEXT.DAT", magasin::LectureSeule | magasin::Variable);
    anciens.Ouvre(NumeroAncienTexte + 1, "TEXT.NDX", magasin::LectureSeule);
    const size_t longueurCle = DispositionDe(t).cles[0].longueur;
    Reconstruit(dossier, t, NumeroAncienTexte, "TEXT.NDX", [&](magasin::Position p, const std::string& cle) {
        std::string texte;
        if (magasin::LitFicheEntiere(NumeroAncienTexte, p, texte) != 0) EchecSur(dossier, "TEXT.DAT");
        std::string fiche = cle.substr(0, longueurCle) + texte;
        if (fiche.size() < DispositionDe(t).longueur) fiche.resize(DispositionDe(t).longueur, '\0');
        return fiche;
    });
}

void MigreTextes(const std::string& dossier) {
    const Table& t = TableMedecin("TEXU");
    CopieTextes(dossier, t);
    Bascule(dossier, t.nom, false);
}

// Whether two directory names, each ending with a separator, name one
// directory (Windows tells nothing of a name with its final separator).
bool MemeDossier(const std::string& a, const std::string& b) {
    const auto sans = [](const std::string& d) { return fs::path(d.substr(0, d.find_last_not_of("\\/") + 1)); };
    std::error_code erreur;
    const bool meme = fs::equivalent(sans(a), sans(b), erreur);
    return erreur ? sans(a).lexically_normal() == sans(b).lexically_normal() : meme;
}

bool PaireExiste(const std::string& dossier, const char* nom) {
    return Existe(dossier + nom + ".DAT") && Existe(dossier + nom + ".NDX");
}

}  // namespace

bool NomValide(std::string_view chemin) {
    if (chemin.starts_with("VDX")) return false;
    if (chemin.size() <= 4) return true;
    const size_t separateur = chemin.find_last_of(std::string_view("\\/", 2));
    return separateur != std::string_view::npos && chemin.size() - separateur - 1 <= 4;
}

int32_t Creation(std::string_view chemin) {
    const std::string dossier = Dossier(chemin);
    for (const char* nom : TablesMedecin)
        if (Existe(dossier + nom + ".DAT") || Existe(dossier + nom + ".NDX")) return Succes;
    std::error_code erreur;
    fs::create_directories(dossier, erreur);
    std::vector<std::string> creees;
    for (const char* nom : TablesMedecin) {
        const Table& t = TableMedecin(nom);
        const bool cree = CreeFichiers(t, t.donnees, dossier + t.fichierDonnees, dossier + t.fichierIndex);
        const bool ferme = FermeFichiers(t, t.donnees);
        for (const char* f : {t.fichierDonnees, t.fichierIndex})
            if (Existe(dossier + f)) creees.push_back(dossier + f);
        if (!cree || !ferme) {
            const Echec echec{EchecMagasin, magasin::GlobalesMagasin()->ErreurMagasin, 0, dossier + t.fichierDonnees};
            for (const std::string& f : creees) fs::remove(f, erreur);
            throw echec;
        }
    }
    return Succes;
}

int32_t Connexion(std::string_view chemin) {
    Session& s = session();
    if (s.ConnecteMedecin) throw Echec{MedecinDejaConnecte};
    const std::string dossier = Dossier(chemin);
    s.CheminMedecin = dossier;
    if (std::error_code erreur; !fs::is_directory(dossier, erreur)) throw Echec{FichiersManquants};
    // What a killed edit or migration left is finished first, the base
    // held against another process's edit.
    const VerrouMedecin verrou(dossier);
    maj::TermineMajInterrompue(dossier);
    TermineBascule(dossier, "PRO", true);
    TermineBascule(dossier, "TEXU", false);
    for (const char* nom : {"PRO", "POSO", "PATH"})
        if (!PaireExiste(dossier, nom)) throw Echec{FichiersManquants};
    const bool textes = PaireExiste(dossier, "TEXU");
    if (!textes && !PaireExiste(dossier, "TEXT")) throw Echec{FichiersManquants};
    if (!LibellesPlies(dossier)) MigreProduits(dossier);
    if (!textes) MigreTextes(dossier);
    s.ConnecteMedecin = true;
    return Succes;
}

int32_t Deconnexion() {
    FermeBaseMedecin();
    session().ConnecteMedecin = false;
    return Succes;
}

int32_t Suppression(std::string_view chemin) {
    const std::string dossier = Dossier(chemin);
    const Session& s = session();
    std::error_code erreur;
    if (s.ConnecteMedecin && MemeDossier(dossier, s.CheminMedecin)) throw Echec{MedecinEnUsage};
    if (!fs::is_directory(dossier, erreur)) return Succes;
    const VerrouMedecin verrou(dossier);
    magasin::FermeFichiersInactifs();
    for (const char* nom : {"PRO", "PATH", "POSO", "TEXT", "TEXU"})
        for (const char* extension : {".DAT", ".NDX"}) fs::remove(dossier + nom + extension, erreur);
    return Succes;
}

int32_t Reparation(std::string_view chemin) {
    const std::string dossier = Dossier(chemin);
    if (std::error_code erreur; !fs::is_directory(dossier, erreur)) throw Echec{FichiersManquants};
    const VerrouMedecin verrou(dossier);
    magasin::FermeFichiersInactifs();
    for (const char* nom : TablesMedecin) {
        const Table& t = TableMedecin(nom);
        const Disposition& d = DispositionDe(t);
        magasin::DescriptionFichier description;
        description.cheminDonnees = dossier + t.fichierDonnees;
        description.cheminIndex = dossier + t.fichierIndex;
        description.longueurFiche = d.longueur;
        description.variable = t.genre == Genre::Variable;
        for (const Cle& c : d.cles) {
            magasin::DescriptionCle cle;
            for (const PartieCle& p : c.parties) cle.segments.push_back({p.champ.decalage, p.longueur});
            description.cles.push_back(std::move(cle));
        }
        std::error_code erreur;
        fs::remove(description.cheminIndex, erreur);
        const int e = magasin::ReconstruitFichier(description);
        if (e != 0 && e != magasin::CleExistante) throw Echec{EchecMagasin, static_cast<int16_t>(e), 0, description.cheminIndex};
        // The segments lay a label key as it stands: the table is filed
        // again by its first key, each label folded.
        if (std::ranges::any_of(d.cles, [](const Cle& c) {
                return std::ranges::any_of(c.parties, [](const PartieCle& p) { return p.pli != Pli::Brut; });
            })) {
            {
                Ouverts table(dossier);
                table.Ouvre(t.donnees, t.fichierDonnees, ModeLecture(t));
                table.Ouvre(t.index(), t.fichierIndex, magasin::LectureSeule);
                Reconstruit(dossier, t, t.donnees, t.fichierIndex, LectureFixe(dossier, t));
            }
            Bascule(dossier, t.nom, false);
        }
    }
    return Succes;
}

}  // namespace vdx::medecin
