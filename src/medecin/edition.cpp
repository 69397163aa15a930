#include "medecin/edition.h"

#include <cstdio>
#include <initializer_list>

#include "maj/unite.h"
#include "medecin/base_medecin.h"
#include "medecin/verrou.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/codes.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"
#include "store/magasin.h"

namespace vdx::medecin {

namespace {

using magasin::Position;

constexpr size_t LongueurCode = 7;

// The failure of the store on a file of the doctor's base (-500).
[[noreturn]] void EchecSur(const char* fichier, int erreur = magasin::GlobalesMagasin()->ErreurMagasin) {
    throw Echec{EchecMagasin, static_cast<int16_t>(erreur), magasin::GlobalesMagasin()->EtatIOMagasin,
                session().CheminMedecin + fichier};
}

void ExigeBase() {
    if (!session().ConnecteMedecin) throw Echec{MedecinNonConnecte};
}

std::string CodeRequis(std::string_view code, size_t longueur) {
    if (code.empty()) throw Echec{Argument1};
    if (code.size() != longueur) throw Echec{CodeMalForme};
    return std::string(code);
}

// A change of the tables as one unit: copied aside, changed, put in place.
template <typename Changement>
int32_t DansUnite(std::initializer_list<const Table*> tables, Changement change) {
    const std::string& dossier = session().CheminMedecin;
    const VerrouMedecin verrou(dossier);
    maj::UniteMaj unite(dossier);
    try {
        for (const Table* t : tables) unite.Ouvre(*t);
        change();
        unite.Valide();
    } catch (Echec& e) {
        if (e.code == EchecMagasin && !e.fichier.starts_with(dossier)) e.fichier = dossier + e.fichier;
        throw;
    }
    return Succes;
}

// The record under key `numero` of an open table, 0 when none.
Position Cherche(const Table& t, size_t numero, const std::string& cle) {
    const Position p = magasin::CleEgale(t.cle(static_cast<int>(numero)), cle.data());
    if (p == 0 && magasin::GlobalesMagasin()->ErreurMagasin != 0) EchecSur(t.fichierIndex);
    return p;
}

std::string Cle(const Table& t, size_t numero, std::string_view fiche) { return *CleDe(DispositionDe(t), numero, fiche, fiche); }

std::string Lit(const Table& t, Position p) {
    std::string fiche;
    if (const int e = magasin::LitFicheEntiere(t.donnees, p, fiche)) EchecSur(t.fichierDonnees, e);
    return fiche;
}

void Ajoute(const Table& t, std::string fiche) {
    const Disposition& d = DispositionDe(t);
    const bool variable = t.genre == Genre::Variable;
    const auto taille = static_cast<uint32_t>(fiche.size());
    const Position p = variable ? magasin::NouvelleFicheVariable(t.donnees, taille) : magasin::NewRecord(t.donnees);
    if (p == 0) EchecSur(t.fichierDonnees);
    if (const int e = variable ? magasin::EcritFicheVariable(t.donnees, p, fiche.data(), taille)
                               : magasin::WriteRecordData(t.donnees, p, fiche.data()))
        EchecSur(t.fichierDonnees, e);
    for (size_t k = 0; k < d.cles.size(); ++k) {
        std::string cle = Cle(t, k, fiche);
        const int e = AjouteCle(d, k, cle, fiche, p);
        if (e == magasin::CleExistante) throw Echec{DejaPresent};
        if (e != 0) EchecSur(t.fichierIndex, e);
    }
}

void Supprime(const Table& t, Position p) {
    const std::string fiche = Lit(t, p);
    for (size_t k = 0; k < DispositionDe(t).cles.size(); ++k) {
        const int e = magasin::DeleteRecordKey(t.cle(static_cast<int>(k)), Cle(t, k, fiche).data(), p);
        if (e != 0 && e != magasin::CleAbsente) EchecSur(t.fichierIndex, e);
    }
    const int e = t.genre == Genre::Variable ? magasin::LibereFicheVariable(t.donnees, p) : magasin::LibereFiche(t.donnees, p);
    if (e != 0) EchecSur(t.fichierDonnees, e);
}

// A record whose first key is `code`, for the lookups.
std::string FicheAvecCode(const Table& t, const ChampTexte& champ, std::string_view code) {
    FicheEcrite f(DispositionDe(t).longueur);
    if (!f.Texte(champ, code)) throw Echec{CodeMalForme};
    return std::move(f.Octets());
}

// The CISP code of a pathology, looked up in the drug base.
bool CispConnu(std::string_view cisp) {
    const Table& t = TableDuCatalogue("VDXCISP");
    TablesOuvertes vocabulaire{&t};
    FicheEcrite f(VDXCISP::Longueur);
    if (!f.Texte(VDXCISP::Code, cisp)) return false;
    const Position p = magasin::CleEgale(t.index(), CleDe(DispositionDe(t), 0, f.Octets())->data());
    if (p == 0 && magasin::GlobalesMagasin()->ErreurMagasin != 0) throw EchecMagasinSur(t.fichierIndex);
    vocabulaire.Ferme();
    return p != 0;
}

// The code after the last of the pathologies' index, on seven digits.
std::string CodeSuivant(const Table& t) {
    std::string cle(DispositionDe(t).cles[0].longueur, '\0');
    const Position p = magasin::DerniereCle(t.index(), cle.data());
    if (p == 0 && magasin::GlobalesMagasin()->ErreurMagasin != 0) EchecSur(t.fichierIndex);
    const long dernier = p == 0 ? 0 : std::strtol(cle.c_str(), nullptr, 10);
    std::string code = std::to_string(dernier + 1);
    if (code.size() > LongueurCode) throw Echec{Argument1};
    return std::string(LongueurCode - code.size(), '0') + code;
}

std::string FichePosologie(const PosologieHote& h) {
    FicheEcrite f(POSO::Longueur);
    const bool textes = f.Texte(POSO::CodePosologie, h.CodePosologie) && f.Texte(POSO::CodeCIP, h.CodeCIP) &&
                        f.Texte(POSO::Libelle, h.Libelle.substr(0, POSO::Libelle.capacite())) &&
                        f.Texte(POSO::TypeRef, h.TypeRef.substr(0, POSO::TypeRef.capacite()));
    if (!textes) throw Echec{Argument1};
    f.Reel(POSO::DoseMin, h.DoseMin);
    f.Reel(POSO::DoseMax, h.DoseMax);
    f.Entier(POSO::CodeUnite, h.CodeUnite);
    f.Entier(POSO::CodeUnite2, h.CodeUnite2);
    f.Reel(POSO::QuantiteRef, h.QuantiteRef);
    f.Entier(POSO::Conversion, h.Conversion);
    f.Entier(POSO::PrisesMin, h.PrisesMin);
    f.Entier(POSO::PrisesMax, h.PrisesMax);
    f.Entier(POSO::Intervalle, h.Intervalle);
    f.Entier(POSO::CodePeriode, h.CodePeriode);
    f.Entier(POSO::CodeMoment, h.CodeMoment);
    f.Entier(POSO::DureeMin, h.DureeMin);
    f.Entier(POSO::DureeMax, h.DureeMax);
    f.Entier(POSO::CodeDuree, h.CodeDuree);
    f.Reel(POSO::DoseMaximum, h.DoseMaximum);
    f.Entier(POSO::MaximumRapporte, h.MaximumRapporte);
    f.Entier(POSO::CodePeriodeMaximum, h.CodePeriodeMaximum);
    f.Entier(POSO::CodeSpecification, h.CodeSpecification);
    f.Entier(POSO::CodeSpecification2, h.CodeSpecification2);
    f.Entier(POSO::NombreModeles, h.NombreModeles);
    return std::move(f.Octets());
}

// The text of a posology in TEXU: its key, then the text, at least the
// fixed part long.
std::string FicheTexte(const std::string& code, std::string_view texte) {
    std::string fiche = code + std::string(texte);
    if (fiche.size() < TEXU::Longueur) fiche.resize(TEXU::Longueur, '\0');
    return fiche;
}

}  // namespace

int32_t Produit(std::string_view code, std::string_view commentaire, int32_t operation) {
    const std::string cip = CodeRequis(code, LongueurCode);
    ExigeBase();
    if (operation == Modification && commentaire.empty()) throw Echec{Argument2};
    commentaire = commentaire.substr(0, PRO::Commentaire.capacite());
    std::string libelle;
    if (operation != Retrait) libelle = LibelleProduit(cip).substr(0, PRO::Libelle.capacite());
    const Table& t = TableMedecin("PRO");
    return DansUnite({&t}, [&] {
        const Position p = Cherche(t, 0, Cle(t, 0, FicheAvecCode(t, PRO::CodeCIP, cip)));
        if (operation == Ajout && p != 0) throw Echec{DejaPresent};
        if (operation != Ajout && p == 0) throw Echec{CodeInconnu};
        if (p != 0) Supprime(t, p);
        if (operation == Retrait) return;
        FicheEcrite f(PRO::Longueur);
        if (!f.Texte(PRO::CodeCIP, cip) || !f.Texte(PRO::Libelle, libelle) || !f.Texte(PRO::Commentaire, commentaire))
            throw Echec{Argument2};
        Ajoute(t, std::move(f.Octets()));
    });
}

std::optional<std::string> Commentaire(std::string_view code) {
    const std::string cip = CodeRequis(code, LongueurCode);
    ExigeBase();
    const Table& t = TableMedecin("PRO");
    TablesOuvertes medecin;
    medecin.OuvreMedecin(t);
    const Position p = Cherche(t, 0, Cle(t, 0, FicheAvecCode(t, PRO::CodeCIP, cip)));
    std::optional<std::string> commentaire;
    if (p != 0) commentaire = std::string(Fiche(Lit(t, p)).Texte(PRO::Commentaire));
    medecin.Ferme();
    return commentaire;
}

int32_t Pathologie(std::string& code, std::string_view libelle, std::string_view cisp, int32_t operation) {
    if (!code.empty() || operation != Ajout) CodeRequis(code, LongueurCode);
    ExigeBase();
    if (operation != Ajout && operation != Modification) operation = Retrait;
    if (operation != Retrait && libelle.empty()) throw Echec{Argument2};
    libelle = libelle.substr(0, PATH::Libelle.capacite());
    if (cisp.size() > PATH::CodeCISP.capacite() || (operation != Retrait && !cisp.empty() && !CispConnu(cisp)))
        throw Echec{CodeInconnu};
    const Table& t = TableMedecin("PATH");
    return DansUnite({&t}, [&] {
        if (code.empty()) code = CodeSuivant(t);
        const Position p = Cherche(t, 0, Cle(t, 0, FicheAvecCode(t, PATH::CodePathologie, code)));
        if (operation == Ajout && p != 0) throw Echec{DejaPresent};
        if (operation != Ajout && p == 0) throw Echec{CodeInconnu};
        FicheEcrite f(PATH::Longueur);
        if (!f.Texte(PATH::CodePathologie, code) || !f.Texte(PATH::Libelle, libelle) || !f.Texte(PATH::CodeCISP, cisp))
            throw Echec{Argument2};
        if (operation != Retrait) {
            const Position homonyme = Cherche(t, 1, Cle(t, 1, f.Octets()));
            if (homonyme != 0 && homonyme != p) throw Echec{operation == Ajout ? DejaPresent : AutreCode};
        }
        if (p != 0) Supprime(t, p);
        if (operation != Retrait) Ajoute(t, std::move(f.Octets()));
    });
}

int32_t Posologie(PosologieHote& h, int32_t operation) {
    ExigeBase();
    if (h.CodeCIP.size() != LongueurCode) throw Echec{ProduitPosologie};
    if (operation != Ajout) {
        CodeRequis(h.CodePosologie, LongueurCodePrive);
        if (!h.CodePosologie.starts_with(MarquePrivee + h.CodeCIP)) throw Echec{CodeMalForme};
    }
    const Table& t = TableMedecin("POSO");
    const Table& textes = TableMedecin("TEXU");
    return DansUnite({&t, &textes}, [&] {
        if (operation == Ajout) {
            // The first number of the product's that no posology takes.
            for (int n = 0;; ++n) {
                if (n == 1000) throw Echec{Argument1};
                const std::string numero = std::to_string(n);
                h.CodePosologie = MarquePrivee + h.CodeCIP + std::string(3 - numero.size(), '0') + numero;
                if (Cherche(t, 0, Cle(t, 0, FicheAvecCode(t, POSO::CodePosologie, h.CodePosologie))) == 0) break;
            }
        }
        const std::string cle = Cle(t, 0, FicheAvecCode(t, POSO::CodePosologie, h.CodePosologie));
        const Position p = Cherche(t, 0, cle);
        if (operation != Ajout && p == 0) throw Echec{CodeInconnu};
        if (p != 0) Supprime(t, p);
        if (const Position texte = Cherche(textes, 0, cle)) Supprime(textes, texte);
        if (operation == Retrait) return;
        Ajoute(t, FichePosologie(h));
        if (!h.Texte.empty()) Ajoute(textes, FicheTexte(h.CodePosologie, h.Texte));
    });
}

}  // namespace vdx::medecin
