// The C exports of the products: code mapping and regulatory status, the
// simple lookups, labels and flags, and the searches of products.
#include "exports/arguments.h"
#include "exports/declaration.h"
#include "products/codes.h"
#include "products/lignes_dc.h"
#include "products/consultations.h"
#include "products/equivalents.h"
#include "products/identification.h"
#include "products/optimisation.h"
#include "products/produits.h"
#include "products/produits_lies.h"
#include "products/recherche.h"
#include "products/transparence.h"
#include "session/tables.h"

using namespace vdx;
using exports::Noms;
using exports::TexteDe;
namespace c = vdx::consultations;

namespace {

// The other form of a code through VDXCIP13: 1; 0 when the next key belongs
// to another code, the string empty; -10 no code; -13 a code not of its
// form's length; -90 no key at or above the code.
int32_t Correspondance(SensCIP sens, const char* code, BSTR* sortie) {
    const size_t attendue = sens == SensCIP::Vers13 ? LongueurCIP : LongueurCIP13;
    const std::string_view texte = exports::TexteBorne(code, attendue);
    if (texte.empty()) throw Echec{Argument1};
    if (texte.size() != attendue) throw Echec{CodeMalForme};
    const std::optional<std::string> autre = CorrespondanceCIP(sens, texte);
    if (!autre) throw Echec{CodeInconnu};
    LivreValeur(sortie, *autre, Argument2);
    return autre->empty() ? Rien : Succes;
}

}  // namespace

// Code mapping and regulatory status.

VDX_EXPORT(CIP_CIP13_Vdx, Chaines, Noms("CIP13"), (Texte, Code), (ChaineSortie, Sortie)) {
    return Correspondance(SensCIP::Vers13, Code, Sortie);
}

VDX_EXPORT(CIP13_CIP_Vdx, Chaines, Noms("CodeCIP"), (Texte, Code), (ChaineSortie, Sortie)) {
    return Correspondance(SensCIP::Vers7, Code, Sortie);
}

VDX_EXPORT(IsStupefiant_Vdx, Connecte, {}, (Texte, Code)) {
    return EstStupefiantCode(CodeProduit(Code)) ? Succes : Rien;
}

VDX_EXPORT(LibelleStupefiant_Vdx, Libre, {}, (Texte, Texte), (ChaineSortie, Sortie)) {
    // Into the host string as 8-bit bytes in every mode.
    RangeEnOctets(Requis(Sortie, Argument2), LibelleStupefiant(Requis(Texte, Argument1)));
    return Succes;
}

VDX_EXPORT(Statut_Vdx, Connecte, NomsDesChamps<FicheStatut>(), (Texte, Code), (Fiche, Fiche)) {
    const std::string cip = CodeProduit(Code);
    if (session().ModeSortie == ModeTableau) VideFiche(Requis(Fiche), GabaritDe<FicheStatut>());
    LivreFiche(Fiche, GabaritDe<FicheStatut>(), ValeursDe(StatutDe(cip)));
    return Succes;
}

// Into the host's record in mode 0, reset once the code is checked and the
// tables open; 8-bit strings whatever the session.
VDX_EXPORT(Economique_Vdx, Connecte, NomsDesChamps<FicheEconomique>(), (Texte, Code), (Fiche, Fiche)) {
    const std::string cip = CodeCIPRequis(Code);
    TablesOuvertes tables(TablesEconomiques());
    if (session().ModeSortie == ModeTableau) VideFiche(Requis(Fiche), GabaritDe<FicheEconomique>());
    LivreFiche(Fiche, GabaritDe<FicheEconomique>(), ValeursDe(EconomieDe(cip)));
    tables.Ferme();
    return Succes;
}

// The equivalents of a product, at most Limite kept a class (-1 no limit).
VDX_EXPORT(ProduitsEquivalents_Vdx, Connecte, NomsDesChamps<LigneEquivalent>(), (Texte, Code), (Tableau, Tableau),
           (Entier, Limite)) {
    const std::string cip = CodeCIPRequis(Code);
    Resultat resultat(Tableau, GabaritDe<LigneEquivalent>(), Argument2);
    resultat.Prend(LignesSansCleSelon<LigneEquivalent>(ProduitsEquivalents(session(), cip, Limite)));
    return resultat.Livre();
}

// The code's form is looked at before the connection; the other arguments
// after its mapping.
VDX_EXPORT(Optimisation_Vdx, Differe, NomsDesChamps<LigneOptimisation>(), (Texte, Code), (Entier, Boites),
           (Entier, Unite), (Reel, Quantite), (Tableau, Tableau), (Entier, Limite)) {
    const std::string cip = CodeCIPConnecte(Code);
    Resultat resultat(Tableau, GabaritDe<LigneOptimisation>(), Argument6);
    resultat.Prend(LignesSansCleSelon<LigneOptimisation>(
        Optimisation(session(), cip, Traitement{Boites, Unite, Quantite}, Limite)));
    return resultat.Livre();
}

// The packages a quantity takes; the host string, emptied before anything
// else in mode 0, gets the package's word.
VDX_EXPORT(Boitage_Vdx, Differe, Noms("Conditionnement"), (Texte, Code), (Entier, Unite), (Reel, Quantite),
           (ChaineSortie, Conditionnement)) {
    const std::string cip = CodeCIPConnecte(Code);
    if (Unite < 1) throw Echec{Argument2};
    if (!(Quantite >= 1)) throw Echec{Argument3};
    const Boitage boitage = BoitageDe(cip, Unite, Quantite);
    LivreValeur(Conditionnement, boitage.Mot, ErreurInterne);
    return boitage.Nombre;
}

VDX_EXPORT(AMMEquivalent_Vdx, Connecte, NomsDesChamps<LigneAMMEquivalent>(), (Texte, Code), (Tableau, Tableau)) {
    const std::string_view code = exports::TexteBorne(Code, LongueurCodeMax);
    if (code.empty()) throw Echec{Argument1};
    Resultat resultat(Tableau, GabaritDe<LigneAMMEquivalent>(), Argument2);
    resultat.Prend(LignesSansCleSelon<LigneAMMEquivalent>(AMMEquivalents(code)));
    return resultat.Livre();
}

// Seven characters, whatever CIP13Actif says: a 13-digit code is no line by
// common name.
VDX_EXPORT(IsMedDC_Vdx, Connecte, {}, (Texte, Code)) {
    const std::string_view code = exports::TexteBorne(Code, LongueurCIP);
    if (code.empty()) throw Echec{Argument1};
    if (code.size() != LongueurCIP) throw Echec{CodeMalForme};
    return EstMedDC(code) ? Succes : Rien;
}

// Simple lookups: a text into a host string, a number or a flag as the
// result. The flags test their code before the connection: -10 comes
// before -2.
#define CONSULTATION_TEXTE(Nom, consultation, champ)                                \
    VDX_EXPORT(Nom, Chaines, Noms(#champ), (Texte, Code), (ChaineSortie, champ)) {  \
        LivreValeur(champ, TexteConsulte(c::consultation, CodeProduit(Code)), Argument2); \
        return Succes;                                                              \
    }
#define CONSULTATION(Nom, consultation)                                  \
    VDX_EXPORT(Nom, Connecte, {}, (Texte, Code)) {                       \
        return ValeurConsultee(c::consultation, CodeProduit(Code));      \
    }
#define DRAPEAU(Nom, consultation)                                        \
    VDX_EXPORT(Nom, Libre, {}, (Texte, Code)) {                           \
        if (TexteDe(Code).empty()) return Argument1;                      \
        if (!session().Connecte) return NonConnecte;                      \
        return ValeurConsultee(c::consultation, CodeProduit(Code));       \
    }

CONSULTATION_TEXTE(UCD_Vdx, UCD, UCD)
CONSULTATION_TEXTE(GenCode_Vdx, GenCode, GenCode)
CONSULTATION_TEXTE(CIP_To_CIS_Vdx, CIS, CIS)
CONSULTATION(CodeRubrique_Vdx, CodeRubrique)
CONSULTATION(NombreUCDParCIP_Vdx, NombreUCD)
CONSULTATION(GetPictogramme_Vdx, Pictogramme)
CONSULTATION(IsT2A_Vdx, T2A)
CONSULTATION(ProduitStatut_Vdx, Statut)
CONSULTATION(ProduitSecable_Vdx, Secabilite)
DRAPEAU(ProduitGenerique_Vdx, Generique)
DRAPEAU(ProduitDopant_Vdx, Dopant)
DRAPEAU(ProduitReferent_Vdx, Referent)
DRAPEAU(ProduitHospitalier_Vdx, Hospitalier)

// Labels and facts of a product.

VDX_EXPORT(LibelleProduit_Vdx, Chaines, Noms("Libelle"), (Texte, Code), (ChaineSortie, Libelle)) {
    LivreValeur(Libelle, LibelleProduit(CodeProduit(Code)), Argument2);
    return Succes;
}
VDX_EXPORT(ProduitSupprime_Vdx, Chaines, Noms("Date"), (Texte, Code), (ChaineSortie, Date)) {
    const std::string date = DateSuppression(CodeProduit(Code));
    if (date.empty()) return Rien;
    LivreValeur(Date, date, Argument2);
    return Succes;
}
// A line by common name of a product; a line gives itself.
VDX_EXPORT(TraductionDC_Vdx, Chaines, Noms("Code", "Libelle"), (Texte, Code), (ChaineSortie, CodeDC),
           (ChaineSortie, Libelle)) {
    const std::optional<LigneDC> ligne = LigneDuProduit(CodeProduit(Code));
    if (!ligne) return Rien;
    LivreValeurs({{CodeDC, Argument2}, {Libelle, Argument3}}, {ligne->Code, ligne->Libelle});
    return Succes;
}
VDX_EXPORT(ProduitsMedDC_Vdx, Connecte, NomsDesChamps<ProduitDeSubstance>(), (Texte, Code), (Tableau, Tableau)) {
    const std::string code = CodeProduit(Code);
    Resultat resultat(Tableau, GabaritDe<ProduitDeSubstance>(), Argument2);
    resultat.Prend(LignesSelon<ProduitDeSubstance>(ProduitsDeLigne(session(), code)));
    return resultat.Livre();
}
VDX_EXPORT(ProduitSmrAsmr_Vdx, Connecte, NomsDesChamps<FicheSmrAsmr>(), (Texte, Code), (Fiche, Fiche)) {
    const std::string cip = CodeProduit(Code);
    if (session().ModeSortie == ModeTableau) VideFiche(Requis(Fiche), GabaritDe<FicheSmrAsmr>());
    const FicheSmrAsmr avis = SmrAsmrDe(cip);
    LivreFiche(Fiche, GabaritDe<FicheSmrAsmr>(), ValeursDe(avis));
    return avis.Vide() ? Rien : Succes;
}
VDX_EXPORT(IdentifiantProduit_Vdx, Connecte, NomsDesChamps<IdentifiantProduit>(), (Texte, Code), (Fiche, Fiche)) {
    const std::string cip = CodeProduit(Code);
    if (session().ModeSortie == ModeTableau) VideFiche(Requis(Fiche), GabaritDe<IdentifiantProduit>());
    LivreFiche(Fiche, GabaritDe<IdentifiantProduit>(), ValeursDe(IdentifiantDe(cip)));
    return Succes;
}
VDX_EXPORT(ExportIdentifiant_Vdx, Connecte, {}, (Texte, Fichier)) {
    const std::string_view chemin = TexteDe(Fichier);
    if (chemin.empty()) throw Echec{Argument1};
    return ExporteIdentifiants(std::string(chemin));
}
VDX_EXPORT(Laboratoire_Vdx, Chaines, Noms("CodeLaboratoire", "Libelle"), (Texte, Code),
           (ChaineSortie, CodeLaboratoire), (ChaineSortie, Libelle)) {
    const CodeEtLibelle laboratoire = LaboratoireDe(CodeProduit(Code));
    LivreValeurs({{CodeLaboratoire, Argument2}, {Libelle, Argument3}}, {laboratoire.code, laboratoire.libelle});
    return Succes;
}
VDX_EXPORT(CIP_Remplacant_Vdx, Chaines, Noms("CodeCIP"), (Texte, Code), (ChaineSortie, Remplacant)) {
    LivreValeur(Remplacant, CIPRemplacant(CodeProduit(Code)), Argument2);
    return Succes;
}
VDX_EXPORT(TotalProduit_Vdx, Connecte, {}) { return TotalProduit(session()); }
VDX_EXPORT(GetProduit_Vdx, Chaines, Noms("CodeCIP", "Libelle"), (Entier, Rang), (ChaineSortie, Code),
           (ChaineSortie, Libelle)) {
    const CodeEtLibelle produit = ProduitAuRang(session(), Rang);
    LivreValeurs({{Code, Argument2}, {Libelle, Argument3}}, {produit.code, produit.libelle});
    return Succes;
}

// Searches.

namespace {

// The rows `lit` gives of a vocabulary code (-10 absent or empty), into the
// host's array of their shape.
template <class Ligne, class Lecteur>
int32_t LignesDuCode(const char* code, SAFEARRAY** tableau, Lecteur lit) {
    const std::string_view texte = TexteDe(code);
    if (texte.empty()) throw Echec{Argument1};
    Resultat resultat(tableau, GabaritDe<Ligne>(), Argument2);
    resultat.Prend(LignesSelon<Ligne>(lit(texte)));
    return resultat.Livre();
}

}  // namespace

// The products filed under a vocabulary code.
#define PRODUITS_LIES(Nom, lien)                                                                                 \
    VDX_EXPORT(Nom, Connecte, NomsDesChamps<ProduitLie>(), (Texte, Code), (Tableau, Tableau)) {                 \
        return LignesDuCode<ProduitLie>(Code, Tableau,                                                         \
                                        [](std::string_view c) { return ProduitsLies(session(), liens::lien, c); }); \
    }
PRODUITS_LIES(RechercheClasse_Vdx, Classes)
PRODUITS_LIES(RechercheFamille_Vdx, Familles)
PRODUITS_LIES(RechercheForme_Vdx, Formes)

VDX_EXPORT(ClasseProduits95_Vdx, Connecte, NomsDesChamps<ProduitDeClasse>(), (Texte, Code), (Tableau, Tableau)) {
    return LignesDuCode<ProduitDeClasse>(Code, Tableau, [](std::string_view c) { return ProduitsDeClasse(session(), c); });
}

namespace {

// A step search: a text beginning with a blank gives 0, the host's array
// untouched. The rows; -20 no array in mode 0.
template <class Recherche>
int32_t Pas(Recherche recherche, const char* texte, SAFEARRAY** tableau, int32_t options, const char* suite,
            int32_t nombre) {
    if (TexteDe(texte).starts_with(' ')) return Rien;
    Resultat resultat(tableau, GabaritProduit, Argument2);
    resultat.Prend(recherche(session(), TexteDe(texte), options, TexteDe(suite), nombre));
    return resultat.Livre();
}

}  // namespace

VDX_EXPORT(RechercheProduitParPas_Vdx, Connecte, Noms("Code", "Libelle", "Texte"), (Texte, Texte),
           (Tableau, Tableau), (Entier, Options), (Texte, Suite), (Entier, Nombre)) {
    return Pas(RechercheProduitParPas, Texte, Tableau, Options, Suite, Nombre);
}
VDX_EXPORT(RechercheProduitParPas2_Vdx, Connecte, Noms("Code", "Libelle", "Texte"), (Texte, Texte),
           (Tableau, Tableau), (Entier, Options), (Texte, Suite), (Entier, Nombre)) {
    return Pas(RechercheProduitParPas2, Texte, Tableau, Options, Suite, Nombre);
}
VDX_EXPORT(RechercheProduitParStatut_Vdx, Connecte, Noms("Code", "Libelle", "Texte"), (Entier, CodeStatut),
           (Tableau, Tableau), (Texte, Suite), (Entier, Nombre)) {
    Resultat resultat(Tableau, GabaritProduit, Argument2);
    resultat.Prend(RechercheProduitParStatut(session(), CodeStatut, TexteDe(Suite), Nombre));
    return resultat.Livre();
}
